// Keeps the mode and the owner of a directory over work that changes them.
#pragma once

#include <sys/stat.h>

#include <string>

#include "exec/descriptor.h"

namespace zelvo {

// Takes mode, owner and group of a directory when it is made and puts them back when it ends:
// archives carry attributes of their top directory, which tar gives to the directory that it
// unpacks into. They go back to this directory, whatever stands under its name by then.
class FileStatusPreserver {
  public:
    // path: opened as by openDestination. Raises CantStatFile.
    explicit FileStatusPreserver(const std::string& path);
    ~FileStatusPreserver();
    FileStatusPreserver(const FileStatusPreserver&) = delete;
    FileStatusPreserver& operator=(const FileStatusPreserver&) = delete;

  private:
    Descriptor directory_;
    struct stat status_ {};
};

}  // namespace zelvo
