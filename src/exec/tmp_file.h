// Temporary files that are written as streams and handed to utilities by name.
#pragma once

#include <ext/stdio_filebuf.h>

#include <ostream>
#include <string>
#include <utility>

namespace zelvo {

// The path of a temporary file and a buffer that writes to it. Its end closes the file and leaves
// it on disk.
class TmpFileBase {
  public:
    // file: path and open descriptor, which is taken over.
    explicit TmpFileBase(const std::pair<std::string, int>& file);
    TmpFileBase(const TmpFileBase&) = delete;
    TmpFileBase& operator=(const TmpFileBase&) = delete;

  protected:
    ~TmpFileBase() = default;

    std::string path_;
    __gnu_cxx::stdio_filebuf<char> buffer_;
};

// A new file that only its owner can read, open for writing. A utility that reads it by name sees
// what was written before the last flush.
class TmpFile : private TmpFileBase, public std::ostream {
  public:
    // prefix: path of the file but for the six characters that make it unique. autoclean: the file
    // is to be gone after destruction. Raises SystemError when the file cannot be made (POSIX
    // mkstemp).
    TmpFile(const std::string& prefix, bool autoclean);
    // A file that cannot be removed is told on standard error.
    ~TmpFile() override;

    const std::string& path() const { return path_; }

  private:
    bool autoclean_;
};

// The same in a directory.
class RMKTmpFile : public TmpFile {
  public:
    // dir: with or without a final slash. prefix: start of the file's name.
    RMKTmpFile(const std::string& dir, const std::string& prefix, bool autoclean);
};

}  // namespace zelvo
