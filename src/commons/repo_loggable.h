// The mix-in of the failures of the backup repository.
#pragma once

#include <exception>

// A failure of which a part can be logged. A catch clause of the repository, which must also catch
// what is no ExTraceable, logs through it.
template <class T>
class RepoLoggableException : public std::exception {
  public:
    ~RepoLoggableException() override = default;

    // The formatted message.
    const char* what() const noexcept override = 0;

    // The part that the logs take; lives as long as the exception.
    virtual const T& LoggablePart() const = 0;
};
