// How far a deployment has come.
#pragma once

#include <string>

#include "report/migration_status.h"

namespace zelvo {

// Counts what a deployment has done and tells it in the status record.
class tDeployProgressReport {
  public:
    // status: the record, not owned. accounts, domains: the totals. Writes the record with all
    // shown as done, which the first update corrects. Raises AssertionFailed for a null status and
    // what saving raises.
    tDeployProgressReport(MigrationStatus* status, int accounts, int domains);

    // Writes the record with the counters, which it never shows above the totals, and with the
    // object that is now the current one. Raises what saving raises.
    void updateProgressStats(const std::string& name, objectType type);

  private:
    MigrationStatus* status_;
    int totalAccounts_;
    int totalDomains_;

  public:
    // What is done; the deployers add to them.
    int completedAccounts = 0;
    int completedDomains = 0;
};

}  // namespace zelvo
