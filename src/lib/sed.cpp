#include "lib/sed.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <tuple>

#include "lib/fork_exec.h"
#include "lib/liblog.h"

namespace {

class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return fd_; }

  private:
    int fd_;
};

// Gives the new file the owner and the mode of the old one. It goes by descriptor: whoever may
// write the directory could have put something else under the name by now.
void restoreAttributes(int fd, const struct stat& old, const char* file) {
    if (fchown(fd, old.st_uid, old.st_gid) != 0) {
        messlog2(0, 0, "WARNING: unable to restore ownership to file %s: %s\n", file,
                 strerror(errno));
    }
    if (fchmod(fd, old.st_mode & 07777) != 0) {
        messlog2(0, 0, "WARNING: unable to restore permissions to file %s: %s\n", file,
                 strerror(errno));
    }
}

// Puts the temporary file in the place of the file. When the rename fails the temporary file stays:
// it is all that is left of the content.
int replaceFile(const char* file, const char* temporary) {
    if (unlink(file) != 0) {
        messlog2(0, 0, "Unable to delete '%s' file: %s", file, strerror(errno));
        unlink(temporary);
        return -1;
    }
    if (rename(temporary, file) != 0) {
        messlog2(0, 0, "Unable to rename '%s' to '%s' file: %s", temporary, file, strerror(errno));
        return -1;
    }
    return 0;
}

int rewrite(char* const argv[], const char* file) {
    struct stat old = {};
    if (lstat(file, &old) != 0) {
        messlog2(0, 0, "ERROR: Unable to save file '%s' attributes : %s", file, strerror(errno));
        return -1;
    }
    const Descriptor source(open(file, O_RDONLY | O_CLOEXEC));
    if (source.get() < 0) {
        messlog2(0, 0, "ERROR: Unable to open file %s for reading: %s", file, strerror(errno));
        return -1;
    }
    const std::string temporary = std::string(file) + ".tmp";
    // What waits under the temporary name, a link or a pipe, must not get what root writes.
    unlink(temporary.c_str());
    const Descriptor target(open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (target.get() < 0) {
        messlog2(0, 0, "ERROR: Unable to truncate or create file %s: %s", temporary.c_str(),
                 strerror(errno));
        return -1;
    }
    if (fork_execv_fd(argv[0], argv, source.get(), target.get()) != 0) {
        // The message shall not speak of an error that came before.
        errno = 0;
        messlog2(0, 0, "Error during sed working\n");
        unlink(temporary.c_str());
        return -1;
    }
    if (replaceFile(file, temporary.c_str()) != 0) {
        return -1;
    }
    if (S_ISREG(old.st_mode)) {
        restoreAttributes(target.get(), old, file);
    } else {
        // The new file is no secret of the link's author, and has no mode to take over.
        std::ignore = fchmod(target.get(), 0644);
    }
    return 0;
}

}  // namespace

// execv does not write to its arguments, whatever its type says.
int run_sed_cmd(const char* expression, const char* file) {
    char* const argv[] = {const_cast<char*>("/bin/sed"), const_cast<char*>("-e"),
                          const_cast<char*>(expression), nullptr};
    return rewrite(argv, file);
}

int run_extended_sed_cmd(const char* expression, const char* file) {
    char* const argv[] = {const_cast<char*>("/bin/sed"), const_cast<char*>("-r"),
                          const_cast<char*>("-e"), const_cast<char*>(expression), nullptr};
    return rewrite(argv, file);
}
