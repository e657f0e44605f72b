#include "restore/domain/domain_suspender.h"

#include <exception>
#include <iterator>
#include <utility>

#include "commons/files.h"
#include "commons/session.h"
#include "commons/text_formatter.h"
#include "exec/log_exec_cmd.h"
#include "report/debug_log.h"
#include "report/error_functions.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

DomainSuspender::DomainSuspender(std::string domainName) : domainName_(std::move(domainName)) {}

DomainSuspender::~DomainSuspender() {
    try {
        doUnsuspendDomain();
    } catch (const std::exception&) {
        // Only a lack of memory comes here. The failure that is under way says more.
        return;
    }
}

void DomainSuspender::runHandler(const std::string& word) const {
    const auto interpreter = files::getPhpExecuteCmd();
    tLogExecCmd cmd(interpreter.front());
    for (auto argument = std::next(interpreter.begin()); argument != interpreter.end();
         ++argument) {
        cmd << *argument;
    }
    cmd << files::getSuspendHandlerUtility() << word << domainName_ << theSession->getDir();
    cmd.exec();
}

void DomainSuspender::suspendDomain() {
    theDebugLog->log("Suspend domain " + domainName_);
    const std::string head = "Can not suspend domain '" + domainName_ + "' due to ";
    try {
        runHandler("suspend");
        suspended_ = true;
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
        theDebugLog->log(head + "the error above. It is not fatal error");
    } catch (...) {
        theDebugLog->log(head + "unknown error. It is not fatal error");
    }
}

void DomainSuspender::doUnsuspendDomain() {
    if (!suspended_) {
        return;
    }
    suspended_ = false;
    theDebugLog->log("Resume domain " + domainName_);
    std::string reason;
    try {
        runHandler("unsuspend");
        return;
    } catch (const ExTraceable& failure) {
        reason = formatPlainTextMessage(failure);
    } catch (...) {
        reason = "Unknown error";
    }
    deploy_error_func(EXC(ResumeDomainFailed) % reason);
}

}  // namespace zelvo
