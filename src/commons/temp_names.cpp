#include "commons/temp_names.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "commons/errors.h"
#include "commons/files.h"
#include "lib/read_configuration.h"

namespace zelvo {

namespace {

std::string defaultDirectory() {
    const char* const configured = qrdConfGet(theQrdConfNames[DUMP_TMP_D]);
    return configured != nullptr ? configured : files::getTmpDir();
}

std::string makeTemplate(const std::string& directory, const std::string& prefix) {
    std::string name = directory.empty() ? defaultDirectory() : directory;
    if (name.empty() || name.back() != '/') {
        name += '/';
    }
    return name + prefix + "XXXXXX";
}

}  // namespace

std::string RMK_getTempFileName(const std::string& directory, const std::string& prefix) {
    const std::string nameTemplate = makeTemplate(directory, prefix);
    std::string name = nameTemplate;
    const int fd = mkstemp(name.data());
    if (fd < 0) {
        const int number = errno;
        throw EXC(CantCreateTempFile) % nameTemplate % strerror(number);
    }
    close(fd);
    return name;
}

std::string RMK_makeTempFileDirectory(const std::string& directory, const std::string& prefix) {
    const std::string nameTemplate = makeTemplate(directory, prefix);
    std::string name = nameTemplate;
    if (mkdtemp(name.data()) == nullptr) {
        const int number = errno;
        throw EXC(CantCreateTempDir) % nameTemplate % strerror(number);
    }
    return name;
}

}  // namespace zelvo
