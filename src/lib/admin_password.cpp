#include "lib/admin_password.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "lib/liblog.h"

namespace {

struct FileCloser {
    void operator()(FILE* file) const {
        const int reason = errno;
        fclose(file);
        errno = reason;
    }
};

}  // namespace

const char* get_admin_password() { return read_admin_password(kAdminPasswordFile); }

const char* read_admin_password(const char* path) {
    static char password[4096];
    switch (readPasswordLine(path, password, sizeof(password))) {
        case PasswordReading::kNotOpened:
            messlog2(1, 0, "Unable to open admin password file");
            break;
        case PasswordReading::kNotRead:
            messlog2(1, 0, "Unable to read admin password file");
            break;
        case PasswordReading::kDone:
            break;
    }
    return password;
}

PasswordReading readPasswordLine(const char* path, char* buffer, int size) {
    buffer[0] = '\0';
    const std::unique_ptr<FILE, FileCloser> file(fopen(path, "re"));
    if (file == nullptr) {
        return PasswordReading::kNotOpened;
    }
    // Only a failed read is a failure; the end of the file is none.
    if (fgets(buffer, size, file.get()) == nullptr) {
        buffer[0] = '\0';
        if (ferror(file.get()) != 0) {
            return PasswordReading::kNotRead;
        }
    }
    buffer[strcspn(buffer, "\n")] = '\0';
    return PasswordReading::kDone;
}
