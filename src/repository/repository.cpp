// How a repository is made.
#include "repository/repository.h"

#include "lib/read_configuration.h"
#include "repository/repository_log.h"
#include "repository/urls.h"

namespace zelvo {

unsigned long tRepository::s_requestTimeout = 24UL * 60 * 60;

tRepository::tRepository(const std::string& place, const std::string& login,
                         const std::string& password, const std::string& subdir, bool passive)
    : place_(place) {
    const std::string name =
        "Repository '" + (subdir.empty() ? place_ : place_ + "/" + subdir) + "'";
    logPrefix_ = name + ": ";
    LogMsg(name + " initialising...");
    rootTransport_ = tRepositoryTransport::Get(place);
    rootTransport_->Init(login, password, passive, s_requestTimeout);
    if (!subdir.empty()) {
        chroot_ = tRepositoryTransport::Chroot(*rootTransport_, subdir);
    }
    transport_ = chroot_ ? chroot_.get() : rootTransport_.get();
    transaction_ = std::make_unique<tFilesTransaction>(*transport_);
    log("Initialized");
}

std::unique_ptr<tRepository> tRepository::GetRepository(const std::string& url,
                                                        const std::string& password, bool passive,
                                                        bool withSubdir) {
    return std::make_unique<tRepository>(GetUrlPlace(url), GetUrlLogin(url), password,
                                         withSubdir ? GetRepositorySubDir() : "", passive);
}

std::unique_ptr<tRepository> tRepository::GetFileRepository(const std::string& url,
                                                            const std::string& password,
                                                            bool passive, std::string& name) {
    std::string base;
    DecomposeUrl(url, base, name);
    const bool isScheme = base.ends_with("://") && base.find("://") == base.size() - 3;
    if (GetUrlPlace(base).empty() || isScheme) {
        // It would be taken for the root of the file system, or for a local directory.
        throw EXC(RepositoryError) % ("url '" + GetUrlPlace(url) + "' has no directory");
    }
    return GetRepository(base, password, passive, false);
}

std::unique_ptr<tRepository> tRepository::GetLocalRepository(bool withSubdir) {
    const std::string path = GetLocalRepoPath();
    if (path.empty()) {
        // The root of the file system would be taken for the repository.
        throw RepositoryException(EXC(RepositoryError) % "the dump directory is not configured",
                                  RepositoryOperationStatus::kUnspecified);
    }
    return std::make_unique<tRepository>(path, "", "", withSubdir ? GetRepositorySubDir() : "",
                                         false);
}

std::string tRepository::GetLocalRepoPath() {
    const char* const path = qrdConfGetDefaultByIndex(DUMP_D);
    return path == nullptr ? "" : path;
}

void tRepository::log(const std::string& text) const { LogMsg(logPrefix_ + text); }

}  // namespace zelvo
