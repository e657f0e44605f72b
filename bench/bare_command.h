// The yardstick of all that runs programs: posix_spawn and waitpid with three pipes, and nothing
// else.
#pragma once

#include <string>
#include <vector>

namespace bench {

// A program with its arguments and environment, ready to be run many times. Not copied, since the
// vectors for the kernel point into the strings.
class BareCommand {
  public:
    // arguments: the first one is the program's path. additions: "NAME=VALUE" strings behind the
    // inherited environment.
    BareCommand(std::vector<std::string> arguments, std::vector<std::string> additions);
    BareCommand(const BareCommand&) = delete;
    BareCommand& operator=(const BareCommand&) = delete;
    BareCommand(BareCommand&&) = default;

    // Runs it with nothing on standard input, reads its output to the end and waits for it. Raises
    // std::runtime_error when it could not be started or was ended by a signal.
    void run() const;

    const std::vector<std::string>& arguments() const { return arguments_; }

  private:
    std::vector<std::string> arguments_;
    std::vector<std::string> additions_;
    std::vector<char*> argv_;
    std::vector<char*> environment_;
};

}  // namespace bench
