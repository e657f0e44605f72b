// The end of a single file that an unpacker left in the temporary directory.
#pragma once

#include <string>

namespace zelvo {

// Removes the file at the end. Needs theDebugLog.
class UnpackedFile {
  public:
    // path: as the unpacker gave it.
    explicit UnpackedFile(std::string path);
    // A file that cannot be removed is told in the debug log; one that is gone already is well.
    ~UnpackedFile();
    UnpackedFile(const UnpackedFile&) = delete;
    UnpackedFile& operator=(const UnpackedFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace zelvo
