// Local temporary files and directories of the repository.
#pragma once

#include <string>
#include <utility>

namespace zelvo {

// Makes an empty file that only root can read (mode 0600) and returns its name. Raises
// CantCreateTempFile.
std::string GetTempFilePath();

// A temporary file, gone with its guard; what hinders that is told in the log.
class TempFileGuard {
  public:
    explicit TempFileGuard(std::string path) : path_(std::move(path)) {}
    TempFileGuard(TempFileGuard&& other) noexcept : path_(std::exchange(other.path_, "")) {}
    TempFileGuard& operator=(TempFileGuard&&) = delete;
    ~TempFileGuard();

    const std::string& path() const { return path_; }

    // Removes the file now. Raises TransportError.
    void remove();

  private:
    // Empty for a file that is another guard's or gone.
    std::string path_;
};

// A temporary directory that only root can enter, gone with its guard and with all that is in it;
// what hinders that is told in the log.
class TempDirGuard {
  public:
    // Raises CantCreateTempDir.
    TempDirGuard();
    ~TempDirGuard();
    TempDirGuard(const TempDirGuard&) = delete;
    TempDirGuard& operator=(const TempDirGuard&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace zelvo
