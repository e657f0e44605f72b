#include "bare_command.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace bench {

namespace {

void makePipe(int (&ends)[2]) {
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("pipe failed");
    }
}

void readToEnd(int fd) {
    char block[4096];
    while (read(fd, block, sizeof(block)) > 0) {
    }
    close(fd);
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts) {
        pointers.push_back(const_cast<char*>(text.c_str()));
    }
    return pointers;
}

}  // namespace

BareCommand::BareCommand(std::vector<std::string> arguments, std::vector<std::string> additions)
    : arguments_(std::move(arguments)),
      additions_(std::move(additions)),
      argv_(pointersTo(arguments_)) {
    argv_.push_back(nullptr);
    for (char** inherited = environ; *inherited != nullptr; ++inherited) {
        environment_.push_back(*inherited);
    }
    for (char* addition : pointersTo(additions_)) {
        environment_.push_back(addition);
    }
    environment_.push_back(nullptr);
}

void BareCommand::run() const {
    int in[2];
    int out[2];
    int err[2];
    makePipe(in);
    makePipe(out);
    makePipe(err);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    pid_t pid = 0;
    const int error =
        posix_spawnp(&pid, argv_[0], &actions, nullptr, argv_.data(), environment_.data());
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    close(err[1]);
    close(in[1]);
    readToEnd(out[0]);
    readToEnd(err[0]);
    int status = 0;
    if (error != 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) {
        throw std::runtime_error("cannot run " + arguments_[0]);
    }
}

}  // namespace bench
