// The failures of the backup repository.
#pragma once

#include <exception>

#include "commons/exception.h"
#include "commons/repo_loggable.h"

ERROR_TAG(TransportError, "%1%");
ERROR_TAG(RepositoryError, "%1%");
ERROR_TAG(ImportError, "%1%");
ERROR_TAG(UrleDecomposingError, "Unable to decompose urls: %1%");

namespace zelvo {

// The class of a transport's failure.
enum class TransportOperationStatus {
    kNone = 0,
    kAccessDenied = 2,
    kBadReply = 3,
    kDataTimeout = 4,
    kUnknownHost = 5,
    kNoConnection = 6,
    kUnspecified = 7
};

// What an import came to.
enum class DumpImportStatus { kNew = 0, kAlreadyThere = 1, kOfAnotherOwner = 2 };

// What made an operation on a repository fail.
enum class RepositoryOperationStatus {
    kNone = 0,
    // A name or a type that is not as the repository's own are.
    kBadName = 1,
    kUnspecified = 2
};

// A failure of one error that also tells its class in a status. Catch it as ExTraceable: it has
// two bases that are std::exception, so a clause for that one does not see it.
template <ErrorTag tag, class Status>
class StatusException : public RepoLoggableException<ExTraceable>, public Exc<tag> {
  public:
    // failure: EXC(tag) with its arguments.
    StatusException(const Exc<tag>& failure, Status status) : Exc<tag>(failure), status_(status) {}

    StatusException* clone() const override { return new StatusException(*this); }
    const char* what() const noexcept override { return Exc<tag>::what(); }
    const ExTraceable& LoggablePart() const override { return *this; }

    Status status() const { return status_; }

  private:
    Status status_;
};

using TransportException = StatusException<&TransportError, TransportOperationStatus>;
using RepositoryException = StatusException<&RepositoryError, RepositoryOperationStatus>;
using ImportException = StatusException<&ImportError, DumpImportStatus>;

// Failures of Pipe, by the side that failed.
class StreamException : public std::exception {};
class InputStreamException : public StreamException {
  public:
    const char* what() const noexcept override { return "Input stream error"; }
};
class OutputStreamException : public StreamException {
  public:
    const char* what() const noexcept override { return "Output stream error"; }
};

}  // namespace zelvo
