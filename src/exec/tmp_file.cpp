#include "exec/tmp_file.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>

#include "commons/system_error.h"

namespace zelvo {

namespace {

constexpr std::size_t kBufferSize = 2048;

std::pair<std::string, int> makeFile(const std::string& prefix) {
    std::string path = prefix + "XXXXXX";
    const int fd = mkstemp(path.data());
    if (fd < 0) {
        throwSystemError("mkstemp() failed: ");
    }
    return {path, fd};
}

std::string joinTemplate(const std::string& dir, const std::string& prefix) {
    return dir + (dir.ends_with('/') ? "" : "/") + prefix;
}

}  // namespace

TmpFileBase::TmpFileBase(const std::pair<std::string, int>& file)
    : path_(file.first), buffer_(file.second, std::ios::out, kBufferSize) {}

TmpFile::TmpFile(const std::string& prefix, bool autoclean)
    : TmpFileBase(makeFile(prefix)), std::ostream(&buffer_), autoclean_(autoclean) {}

TmpFile::~TmpFile() {
    if (autoclean_ && unlink(path_.c_str()) != 0) {
        std::cerr << "TmpFile autoclean failed: " << strerror(errno) << std::endl;
    }
}

RMKTmpFile::RMKTmpFile(const std::string& dir, const std::string& prefix, bool autoclean)
    : TmpFile(joinTemplate(dir, prefix), autoclean) {}

}  // namespace zelvo
