#include "files.h"

#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "paths.h"

namespace sandbox {

Fd& Fd::operator=(Fd&& other) noexcept {
    if (this != &other) {
        if (fd_ >= 0) {
            close(fd_);
        }
        fd_ = other.release();
    }
    return *this;
}

Fd::~Fd() {
    if (fd_ >= 0) {
        close(fd_);
    }
}

int Fd::release() { return std::exchange(fd_, -1); }

void failWithErrno(const std::string& doing) {
    const int error = errno;
    throw std::runtime_error(doing + ": " + std::strerror(error));
}

std::string stateFile(const char* name) { return std::string(kStateDir) + "/" + name; }

bool fileExists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

void makeDir(const std::string& path, mode_t mode) {
    if (mkdir(path.c_str(), mode) != 0 && errno != EEXIST) {
        failWithErrno("cannot make " + path);
    }
}

void makeDirs(const std::string& path) {
    if (fileExists(path)) {
        return;
    }
    makeDirs(path.substr(0, path.rfind('/')));
    makeDir(path);
}

void removeTree(const std::string& path) {
    constexpr int kOpenAtOnce = 16;
    const auto removeOne = [](const char* name, const struct stat*, int, FTW*) {
        return std::remove(name);
    };
    if (nftw(path.c_str(), removeOne, kOpenAtOnce, FTW_DEPTH | FTW_PHYS) != 0 && errno != ENOENT) {
        failWithErrno("cannot remove " + path);
    }
}

std::string readAll(int fd) {
    std::string text;
    char block[65536];
    for (;;) {
        const ssize_t size = read(fd, block, sizeof block);
        if (size > 0) {
            text.append(block, static_cast<std::size_t>(size));
        } else if (size == 0) {
            return text;
        } else if (errno != EINTR) {
            failWithErrno("cannot read");
        }
    }
}

std::optional<std::string> readFile(const std::string& path) {
    const Fd fd(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        failWithErrno("cannot open " + path);
    }
    return readAll(fd.get());
}

void writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t size = write(fd, text.data(), text.size());
        if (size >= 0) {
            text.remove_prefix(static_cast<std::size_t>(size));
        } else if (errno != EINTR) {
            failWithErrno("cannot write");
        }
    }
}

long appendToFile(const std::string& path, std::string_view text) {
    const Fd fd(open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600));
    if (!fd) {
        failWithErrno("cannot open " + path);
    }
    if (write(fd.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        failWithErrno("cannot append to " + path);
    }
    // An appending write leaves the descriptor right behind what it wrote.
    return static_cast<long>(lseek(fd.get(), 0, SEEK_CUR));
}

}  // namespace sandbox
