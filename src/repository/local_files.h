// Files of this machine on their way into a repository and back.
#pragma once

#include <fstream>
#include <string>

namespace zelvo {

// Opens a regular file for reading. Raises tRepository::StreamError with its name and the reason.
std::ifstream openLocalFile(const std::string& path);

// Whether writing a file loses nothing and needs no care: it is not there, or is an empty one.
bool isNewOrEmpty(const std::string& path);

// A local file that is written, and removed unless all of it was.
class NewLocalFile {
  public:
    // Cuts what is there. Raises tRepository::StreamError.
    explicit NewLocalFile(const std::string& path);
    // What was a device or a link before stays: it is not ours to remove.
    ~NewLocalFile();
    NewLocalFile(const NewLocalFile&) = delete;
    NewLocalFile& operator=(const NewLocalFile&) = delete;

    std::ostream& stream() { return stream_; }

    // Raises OutputStreamException when not all could be written.
    void finish();

  private:
    std::string path_;
    std::ofstream stream_;
    bool isWhole_ = false;
};

// Copies a regular file, byte by byte: the system's own ways do not lead from every file system to
// every other. Raises tRepository::StreamError and tRepository::StreamPipeError; a copy that is not
// whole goes.
void copyLocalFile(const std::string& from, const std::string& to);

}  // namespace zelvo
