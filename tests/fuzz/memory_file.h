// A file that lives in memory only, for readers that ask for a file's name.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

class MemoryFile {
  public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : fd_(memfd_create("fuzz", MFD_CLOEXEC)) {
        if (fd_ < 0 || write(fd_, data, size) != static_cast<ssize_t>(size)) abort();
    }
    ~MemoryFile() { close(fd_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    // A name by which this process can open it, from its start each time.
    std::string path() const { return "/proc/self/fd/" + std::to_string(fd_); }

  private:
    int fd_;
};
