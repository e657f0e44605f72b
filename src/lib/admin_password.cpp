#include "lib/admin_password.h"

#include <cstdio>
#include <cstring>

#include "lib/liblog.h"

const char* get_admin_password() { return read_admin_password("/etc/qrd/.qrd.shadow"); }

const char* read_admin_password(const char* path) {
    static char password[4096];
    password[0] = '\0';
    FILE* const file = fopen(path, "re");
    if (file == nullptr) {
        messlog2(1, 0, "Unable to open admin password file");
        return password;
    }
    // An empty file is an empty password; only a failed read is a failure.
    if (fgets(password, sizeof(password), file) == nullptr && ferror(file)) {
        messlog2(1, 0, "Unable to read admin password file");
    }
    fclose(file);
    password[strcspn(password, "\n")] = '\0';
    return password;
}
