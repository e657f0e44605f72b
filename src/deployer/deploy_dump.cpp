#include "deployer/deploy_dump.h"

#include <memory>
#include <utility>

#include "commons/files.h"
#include "commons/session.h"
#include "content/regular_unpacker.h"
#include "content/repository_unpacker.h"
#include "deployer/content_source.h"
#include "report/log4cpp_setup.h"
#include "report/migration_status.h"
#include "report/progress_report.h"
#include "restore/restorer.h"
#include "restore/zelvo_dump.h"
#include "xml/validation.h"

namespace zelvo {

namespace {

void validate(tXmlZelvoDump& dump, bool skipXsd) {
    if (skipXsd) {
        deployerCategory().debug("DUMP validation have been skipped due to user settings!");
        return;
    }
    const std::string schema = files::getZelvoRestoreSpecificationXsdFileName();
    deployerCategory().debugStream() << "Validate dump using restore specification: " << schema;
    validateSchema(dump, schema);
}

// What unpacks the content archives. repository: makes the one that holds them.
template <class Repository>
std::shared_ptr<ContentUnpacker> makeUnpacker(bool noRepository, Repository&& repository) {
    if (noRepository) {
        deployerCategory().debug("Content archives are expected in the session");
        return std::make_shared<RegularUnpacker>();
    }
    std::unique_ptr<tRepository> made = repository();
    deployerCategory().debugStream()
        << "Content archives are expected in the repository " << made->place();
    return std::make_shared<RepositoryUnpacker>(std::move(made));
}

// The run's unpacker, which ends with the run and not with the process: what it holds open or on
// disk goes while there is still a log to tell of it.
class RunUnpacker {
  public:
    explicit RunUnpacker(const std::shared_ptr<ContentUnpacker>& unpacker) {
        tDeployDocAbility::extractor = unpacker;
    }
    ~RunUnpacker() { tDeployDocAbility::extractor.reset(); }
    RunUnpacker(const RunUnpacker&) = delete;
    RunUnpacker& operator=(const RunUnpacker&) = delete;
};

}  // namespace

void action_deploy_dump(bool notify, const std::string& domainTemplate,
                        const std::string& backupUser, const std::string& backupUserType,
                        bool noRepository, const std::string& sessionPath,
                        const std::string& repositoryUrl, const std::string& repositoryLogin,
                        const std::string& repositoryPwd, bool skipXsd, bool suspend) {
    const std::string path = theSession->getZelvoDumpFileName();
    const std::unique_ptr<MigrationStatus> status = createMigrationStatusFile();
    status->setIdle();
    status->saveFile();

    tXmlZelvoDump dump(path.c_str());
    dump.initFileDoc("migration-dump");
    const XmlNode root(dump.doc(), dump.root());
    std::shared_ptr<ContentUnpacker> unpacker = makeUnpacker(noRepository, [&] {
        return openRepository(chooseRepositoryPath(repositoryUrl, root, sessionPath),
                              repositoryLogin, repositoryPwd);
    });
    validate(dump, skipXsd);

    tDeployProgressReport report(status.get(), dump.getAccountsNum(), dump.getDomainsNum());
    const RunUnpacker runUnpacker(std::exchange(unpacker, nullptr));
    ZelvoDumpRestorer restorer;
    tDeployDocAbility::report_ptr_ = &report;
    tDeployDocAbility::doc_ = dump.doc();
    tDeployDocAbility::xnode_root_ = dump.root();
    tDeployDocAbility::root = root;
    tDeployDocAbility::domainTemplate = domainTemplate;
    tDeployDocAbility::notifyUsers = notify;
    tDeployDocAbility::backupUser = backupUser;
    tDeployDocAbility::backupUserType = backupUserType;
    tDeployDocAbility::suspend = suspend;
    restorer();
    // The record's end saves it too, but cannot tell the caller when that fails.
    status->saveFile();
}

}  // namespace zelvo
