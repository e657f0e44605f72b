// Spec files of migration agents. Whatever one holds, it is understood or refused with a message,
// and a value is a part of one line.
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "deployer/agent.h"

namespace {

// A file in memory with this content, as long as it lives.
class MemoryFile {
  public:
    MemoryFile(const uint8_t* data, size_t size) : fd_(memfd_create("spec", MFD_CLOEXEC)) {
        if (fd_ < 0 || write(fd_, data, size) != static_cast<ssize_t>(size)) {
            abort();
        }
    }
    ~MemoryFile() { close(fd_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(fd_); }

  private:
    int fd_;
};

bool isPartOfLine(const std::string& value) {
    return value.find('\n') == std::string::npos && value.find_first_of(" \t\v\f\r") != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const MemoryFile file(data, size);
    try {
        for (const std::string& value : zelvo::Agent::parse(file.path())) {
            if (!isPartOfLine(value)) {
                abort();
            }
        }
    } catch (const zelvo::Exc<&zelvo::Agent::ParseFailed>& failure) {
        if (!std::string(failure.what()).starts_with("Unable to parse spec file: ")) {
            abort();
        }
    }
    return 0;
}
