// Whole files, directories and descriptors, read and written without streams: a utility call is
// over in less time than a stream library takes to start.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace sandbox {

// Owner of a descriptor.
class Fd {
  public:
    explicit Fd(int fd = -1) : fd_(fd) {}
    Fd(Fd&& other) noexcept : fd_(other.release()) {}
    Fd& operator=(Fd&& other) noexcept;
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    ~Fd();

    int get() const { return fd_; }
    int release();
    explicit operator bool() const { return fd_ >= 0; }

  private:
    int fd_;
};

// Throws std::runtime_error with the text of errno behind what was being done.
[[noreturn]] void failWithErrno(const std::string& doing);

// The path of a file of the state directory, seen from inside.
std::string stateFile(const char* name);

bool fileExists(const std::string& path);

// A directory, and one with all above it; what exists stays as it is.
void makeDir(const std::string& path, mode_t mode = 0755);
void makeDirs(const std::string& path);

// The directory with all in it, links not followed; nothing when it does not exist.
void removeTree(const std::string& path);

// Reads up to the end of file; throws on an error.
std::string readAll(int fd);

// The content of a file, or nothing when there is no such file.
std::optional<std::string> readFile(const std::string& path);

void writeAll(int fd, std::string_view text);

// Appends the text with one write, so that lines of writers side by side stay whole. Gives the size
// of the file right behind the text.
long appendToFile(const std::string& path, std::string_view text);

}  // namespace sandbox
