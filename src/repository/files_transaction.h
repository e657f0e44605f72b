// What an operation of many files has made so far, so that it can be undone.
#pragma once

#include <string>
#include <vector>

#include "commons/exception.h"
#include "repository/transport.h"

namespace zelvo {

// Lives no longer than the process; a file that was there before is never in it.
class tFilesTransaction {
  public:
    static void TransactionError(bool) {}

    // transport: must outlive the transaction.
    explicit tFilesTransaction(tRepositoryTransport& transport) : transport_(&transport) {}

    // Raises TransactionError when it is started already.
    void Begin();
    // Forgets what was made; it stays. These two raise TransactionError when it is not started.
    void Commit();
    // Removes what was made, files in the order in which they were and then directories, the
    // deepest first and only those that hold nothing else; a failure is logged and costs its own
    // entry alone.
    void Rollback();
    bool IsStarted() const { return started_; }

    // Ignored unless it is started. path: relative to the transport.
    void AddCreatedFile(const std::string& path);
    void AddCreatedDir(const std::string& path);

  private:
    void requireStarted() const;
    void finish();

    tRepositoryTransport* transport_;
    std::vector<std::string> createdFiles_;
    std::vector<std::string> createdDirs_;
    bool started_ = false;
};

}  // namespace zelvo

// The code is that of another error, and readers of result documents know it so.
ERROR_DEFINITION(zelvo::tFilesTransaction::TransactionError, "tRepository::StreamPipeError",
                 "Transaction error: %1%");
