#include "deployer/act.h"

#include "commons/session.h"
#include "commons/signals.h"
#include "commons/termination.h"
#include "deployer/agents_list.h"
#include "deployer/deploy_dump.h"
#include "deployer/translate_dump.h"
#include "report/debug_log.h"
#include "report/result_log.h"
#include "report/termination_lines.h"

namespace zelvo {

namespace {

void action_delete_session() { theSession->remove(); }

void runAction(const config& settings) {
    switch (action) {
        case kTranslateDump:
            action_translate_dump(settings.agentName);
            break;
        case kDeployDump:
            action_deploy_dump(settings.notify, settings.domainTemplate, settings.backupUser,
                               settings.backupUserType, settings.noRepository, settings.sessionPath,
                               settings.repositoryUrl, settings.repositoryLogin,
                               settings.repositoryPwd, settings.skipXsd, settings.suspend);
            break;
        case kDeleteSession:
            action_delete_session();
            break;
        default:
            break;
    }
}

}  // namespace

void act(const config& settings) {
    if (action == kGetAgentsList) {
        getAgentsList()->saveDocToStdout();
        return;
    }
    LogLifetimeController log;
    installKillHandler();
    try {
        runAction(settings);
        theLog->setSuccess(true);
    } catch (const ExTraceable& failure) {
        theLog->log(failure);
        theDebugLog->log(failure);
    } catch (const MigrationTerminatedException& termination) {
        // A run that was stopped on purpose is a success.
        theLog->setSuccess(true);
        theDebugLog->log(std::string(termination.what()));
    } catch (const std::exception& failure) {
        // It ends the run, and a caller that drops standard error would never learn of it.
        theDebugLog->log(std::string(failure.what()));
        throw;
    }
    // A signal that no further object followed is owed its line all the same.
    writeTerminationLines();
    log.finish();
}

}  // namespace zelvo
