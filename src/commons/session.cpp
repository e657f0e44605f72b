#include "commons/session.h"

#include <boost/filesystem/operations.hpp>

#include "commons/errors.h"
#include "commons/files.h"
#include "commons/make_dir.h"
#include "lib/zelvo_ugid.h"

namespace zelvo {

namespace {

constexpr const char* kArchivesDir = "archives";

std::string inDir(const std::string& dir, const std::string& name) { return dir + "/" + name; }

// A path that cannot even be looked at counts as one that is not there.
bool exists(const std::string& path) {
    boost::system::error_code error;
    return boost::filesystem::exists(path, error);
}

bool isDirectory(const std::string& path) {
    boost::system::error_code error;
    return boost::filesystem::is_directory(path, error);
}

// The group is the one that has the number of the panel's user.
void makeSessionDir(const std::string& path) {
    make_dir(path, 0, static_cast<gid_t>(get_user_id("qrdadm")), 0750);
}

}  // namespace

SessionFiles* theSession = nullptr;

SessionFiles::SessionFiles(const std::string& path) : path_(path) {
    if (!exists(path_)) {
        makeSessionDir(path_);
    }
    if (!isDirectory(path_)) {
        throw EXC(UnableToCreateSession) % "Unable to create session directory";
    }
    const std::string archives = inDir(path_, kArchivesDir);
    if (!exists(archives)) {
        makeSessionDir(archives);
    }
    if (!isDirectory(path_)) {
        throw EXC(UnableToCreateSession) % "Unable to create session archives directory";
    }
}

void SessionFiles::remove() { boost::filesystem::remove_all(path_); }

std::string SessionFiles::getDumpFileName() const { return inDir(path_, "dump.xml"); }

std::string SessionFiles::getZelvoDumpFileName() const { return inDir(path_, "restore.xml"); }

std::string SessionFiles::getLogFileName() const { return inDir(path_, "migration.log"); }

std::string SessionFiles::getResultFileName() const { return inDir(path_, "migration.result"); }

std::string SessionFiles::getStatusFileName() const { return inDir(path_, "migration.status"); }

std::string SessionFiles::getDeploymentStatusFileName() const {
    return inDir(path_, "agent-deployment.status");
}

std::string SessionFiles::getScoutResultFileName() const {
    return inDir(path_, "scout-result.xml");
}

std::string SessionFiles::getDumpingStatusFileName() const {
    return inDir(path_, files::getRemoteDumpingStatusFileName());
}

std::string SessionFiles::getCidFile(const std::string& name) const { return inDir(path_, name); }

std::string SessionFiles::getDir() const { return path_; }

std::string SessionFiles::getCidFilesDir() const { return path_; }

SessionLifetimeController::SessionLifetimeController(const std::string& path) {
    theSession = new SessionFiles(path);
}

SessionLifetimeController::~SessionLifetimeController() {
    delete theSession;
    theSession = nullptr;
}

}  // namespace zelvo
