// The action --deploy-dump: from the session's dump to a restored server.
#pragma once

#include <string>

namespace zelvo {

// Restores the canonical dump of the session. notify: tell users of their new accounts.
// domainTemplate: name of a template for all domains, or empty. backupUser, backupUserType: on
// whose behalf, or empty. noRepository: the archives lie in the session. repositoryUrl: a local
// path or URL, or empty for the dump's own. skipXsd: no validation. suspend: domains are suspended
// while they are restored. Raises what keeps the dump from being restored at all; failures of
// single objects are logged.
void action_deploy_dump(bool notify, const std::string& domainTemplate,
                        const std::string& backupUser, const std::string& backupUserType,
                        bool noRepository, const std::string& sessionPath,
                        const std::string& repositoryUrl, const std::string& repositoryLogin,
                        const std::string& repositoryPwd, bool skipXsd, bool suspend);

}  // namespace zelvo
