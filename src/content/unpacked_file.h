// A single file out of an archive, for a utility of the panel.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "content/unpack_directory.h"

namespace zelvo {

// The file in a directory of its own, which goes with this object and takes along whatever else the
// archive left there.
class UnpackedFile {
  public:
    // directory: where the archive was unpacked. path: full path of the file in it.
    UnpackedFile(std::unique_ptr<UnpackDirectory> directory, std::string path)
        : directory_(std::move(directory)), path_(std::move(path)) {}

    const std::string& path() const { return path_; }

  private:
    std::unique_ptr<UnpackDirectory> directory_;
    std::string path_;
};

}  // namespace zelvo
