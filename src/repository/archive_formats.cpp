#include "repository/archive_formats.h"

#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

bool hasBytes(std::ifstream& file, std::streamoff offset, const std::string& bytes) {
    std::string found(bytes.size(), '\0');
    file.clear();
    file.seekg(offset);
    file.read(found.data(), static_cast<std::streamsize>(found.size()));
    return file.good() && found == bytes;
}

}  // namespace

bool HasZipFormat(std::ifstream& file) { return hasBytes(file, 0, "PK"); }

bool HasGzipFormat(std::ifstream& file) { return hasBytes(file, 0, "\x1f\x8b"); }

bool HasTarFormat(std::ifstream& file) { return hasBytes(file, 0x101, "ustar"); }

bool IsGzipped(const std::string& path) {
    LogMsg("Check file " + path + " is gzipped");
    std::ifstream file(path, std::ios::binary);
    if (HasGzipFormat(file)) {
        LogMsg("File is gzipped");
        return true;
    }
    if (HasTarFormat(file)) {
        LogMsg("File is not gzipped");
        return false;
    }
    throw EXC(RepositoryError) % "File has wrong format";
}

}  // namespace zelvo
