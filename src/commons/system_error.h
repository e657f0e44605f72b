// Failures of system calls. They stand outside ExTraceable on purpose: no guard around one object
// catches them, so they end the run.
#pragma once

#include <stdexcept>
#include <string>

namespace zelvo {

// A failed system call.
class SystemError : public std::runtime_error {
  public:
    // message: what was being done, may be empty. number: the error number (errno).
    SystemError(const std::string& message, int number);

    int number() const { return number_; }

    // The message, ": " if there is one, and strerror of the number; built on the first call.
    const char* what() const noexcept override;

  private:
    int number_;
    mutable std::string text_;
};

// A SystemError with a fixed number, so that a catch clause can pick it out.
template <int n>
class ExSystemError : public SystemError {
  public:
    explicit ExSystemError(const std::string& message) : SystemError(message, n) {}
};

// Throws the failure of a system call: ExSystemError for EPERM, ENOENT, EINTR, ECHILD and EAGAIN,
// otherwise SystemError. A number of 0 takes the current errno, always as a plain SystemError.
[[noreturn]] void throwSystemError(const std::string& message, int number = 0);

}  // namespace zelvo
