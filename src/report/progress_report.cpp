#include "report/progress_report.h"

#include <algorithm>

#include "commons/errors.h"

namespace zelvo {

tDeployProgressReport::tDeployProgressReport(MigrationStatus* status, int accounts, int domains)
    : status_(status), totalAccounts_(accounts), totalDomains_(domains) {
    if (status_ == nullptr) {
        throw EXC(AssertionFailed) % "log_ptr_";
    }
    status_->setDeployTotals(std::to_string(accounts), std::to_string(domains));
    status_->setDeploy(std::to_string(accounts), std::to_string(domains));
    status_->saveFile();
}

void tDeployProgressReport::updateProgressStats(const std::string& name, objectType type) {
    status_->setDeploy(std::to_string(std::min(totalAccounts_, completedAccounts)),
                       std::to_string(std::min(totalDomains_, completedDomains)));
    status_->setCurrentObject(name, type);
    status_->saveFile();
}

}  // namespace zelvo
