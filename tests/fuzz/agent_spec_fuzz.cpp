// Spec files of migration agents. Whatever one holds, it is understood or refused with a message,
// and a value is a part of one line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "deployer/agent.h"
#include "memory_file.h"

namespace {

bool isPartOfLine(const std::string& value) {
    return value.find('\n') == std::string::npos && value.find_first_of(" \t\v\f\r") != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const MemoryFile file(data, size);
    try {
        for (const std::string& value : zelvo::Agent::parse(file.path())) {
            if (!isPartOfLine(value)) abort();
        }
    } catch (const zelvo::Exc<&zelvo::Agent::ParseFailed>& failure) {
        if (!std::string(failure.what()).starts_with("Unable to parse spec file: ")) abort();
    }
    return 0;
}
