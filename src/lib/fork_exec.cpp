#include "lib/fork_exec.h"

#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace {

// What posix_spawn does to the descriptors of the child.
class FileActions {
  public:
    FileActions() : error_(posix_spawn_file_actions_init(&actions_)), made_(error_ == 0) {}
    ~FileActions() {
        if (made_) {
            posix_spawn_file_actions_destroy(&actions_);
        }
    }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    // Returns 0 or the number of the error.
    int prepare(int inFd, int outFd) {
        if (error_ == 0) {
            error_ = posix_spawn_file_actions_adddup2(&actions_, inFd, STDIN_FILENO);
        }
        if (error_ == 0) {
            error_ = posix_spawn_file_actions_adddup2(&actions_, outFd, STDOUT_FILENO);
        }
        if (error_ == 0) {
            error_ = posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        }
        return error_;
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
    int error_;
    bool made_;
};

// The signal state of the child: every disposition the default one, nothing blocked.
class Attributes {
  public:
    Attributes() {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~Attributes() { posix_spawnattr_destroy(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* get() const { return &attributes_; }

  private:
    posix_spawnattr_t attributes_;
};

int waitFor(pid_t child) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended == -1 && errno == EINTR);
    return ended == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

int fork_execv_fd(const char* path, char* const argv[], int inFd, int outFd) {
    FileActions actions;
    const Attributes attributes;
    pid_t child = -1;
    int error = actions.prepare(inFd, outFd);
    if (error == 0) {
        error = posix_spawn(&child, path, actions.get(), attributes.get(), argv, environ);
    }
    if (error != 0) {
        errno = error;
        return -1;
    }
    return waitFor(child);
}
