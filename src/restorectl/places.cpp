#include "restorectl/places.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "exec/url_encoding.h"
#include "repository/ftp_url.h"
#include "repository/urls.h"

namespace zelvo {

namespace {

constexpr mode_t kOthers = S_IRWXG | S_IRWXO;

const std::string kFtp = "ftp://";
const std::string kLocal = "local:";

bool isFtp(const std::string& text) { return text.starts_with(kFtp); }

[[noreturn]] void refuseFile(const std::string& file, const std::string& reason) {
    throw std::runtime_error("credentials file '" + file + "' " + reason);
}

// Its lines are "login=NAME" and "password=TEXT".
void readCredentials(const std::string& file, Place& place) {
    std::ifstream in(file);
    struct stat status = {};
    if (!in || stat(file.c_str(), &status) != 0) {
        refuseFile(file, std::string("cannot be read: ") + std::strerror(errno));
    }
    if ((status.st_mode & kOthers) != 0) {
        refuseFile(file, "is open to others than its owner: chmod 600 it");
    }
    const std::array<std::pair<std::string, std::string*>, 2> keys = {
        {{"login=", &place.login}, {"password=", &place.password}}};
    std::size_t number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        bool isKnown = line.empty();
        for (const auto& [key, value] : keys) {
            if (line.starts_with(key)) {
                *value = line.substr(key.size());
                isKnown = true;
            }
        }
        if (!isKnown) {
            // The line itself may be a password.
            refuseFile(
                file, "has neither \"login=\" nor \"password=\" in line " + std::to_string(number));
        }
    }
}

// The value of a variable, which nobody gets to see after that: /proc shows what the environment
// held at first until it is overwritten.
std::string takeVariable(const std::string& name) {
    char* const value = std::getenv(name.c_str());
    if (value == nullptr) {
        return "";
    }
    std::string text = value;
    explicit_bzero(value, text.size());
    unsetenv(name.c_str());
    return text;
}

void requireNoPassword(const std::string& login, const std::string& variables) {
    if (login.find(':') != std::string::npos) {
        throw UsageError("a password does not belong into a URL, where others see it: use " +
                         variables + "PASSWORD or a credentials file");
    }
}

// variables: how the names of the environment's begin.
void readUrl(Place& place, const std::string& variables) {
    if (!hasHost(place.text)) {
        // What is told could be a part of a password.
        throw UsageError("the URL has no host, or a login that is not percent-encoded");
    }
    const std::string login = loginOfUrl(place.text);
    requireNoPassword(login, variables);
    if (!login.empty()) {
        place.login = urldecode(login);
    }
    place.url = urlWithoutLogin(place.text);
}

void readPath(Place& place) {
    if (place.text.find("://") != std::string::npos) {
        throw UsageError("a place is a local path, or a URL that begins with ftp://");
    }
    const std::string path =
        place.text.starts_with(kLocal) ? place.text.substr(kLocal.size()) : place.text;
    place.url = std::filesystem::absolute(path).string();
}

void readPlace(Place& place, const std::string& variables) {
    if (!place.credentialsFile.empty()) {
        readCredentials(place.credentialsFile, place);
    }
    for (auto [name, value] : {std::pair("LOGIN", &place.login), {"PASSWORD", &place.password}}) {
        const std::string text = takeVariable(variables + name);
        if (value->empty()) {
            *value = text;
        }
    }
    if (isFtp(place.text)) {
        readUrl(place, variables);
    } else if (!place.text.empty()) {
        readPath(place);
    }
}

std::unique_ptr<tRepository> open(const Place& place, const Settings& settings) {
    return std::make_unique<tRepository>(place.url, place.login, place.password, "",
                                         !settings.isActive);
}

// A place that is mistyped must not look like one without backups.
void requirePlace(tRepository& repository) {
    try {
        if (!repository.transport().IsDirExist("")) {
            // Only a listing tells the reason.
            Paths names;
            repository.transport().ListDir("", names);
        }
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(RepositoryError, failure) %
            ("repository '" + repository.place() + "' cannot be opened: " + failure.what());
    }
}

}  // namespace

void readPlaces(Settings& settings) {
    Place& repository = settings.repository;
    if (const char* const text = std::getenv("RESTORECTL_REPOSITORY");
        text != nullptr && !repository.isSaid) {
        repository.text = text;
        repository.isSaid = true;
    }
    if (repository.isSaid && repository.text.empty()) {
        // Such as of a variable of a script that was never set.
        throw UsageError("the repository is empty");
    }
    readPlace(repository, "RESTORECTL_");
    readPlace(settings.other, "RESTORECTL_OTHER_");
    if (!settings.other.url.ends_with('/') && std::filesystem::is_directory(settings.other.url)) {
        throw UsageError("'" + settings.other.text + "' is a directory: write a \"/\" behind it");
    }
}

std::unique_ptr<tRepository> openRepository(const Settings& settings) {
    std::unique_ptr<tRepository> repository = settings.repository.url.empty()
                                                  ? tRepository::GetLocalRepository(true)
                                                  : open(settings.repository, settings);
    requirePlace(*repository);
    return repository;
}

std::unique_ptr<tRepository> openOther(const Settings& settings, std::string& name) {
    Place place = settings.other;
    DecomposeUrl(settings.other.url, place.url, name);
    if (place.url.empty() || place.url == kFtp) {
        throw UsageError("'" + settings.other.url + "' has no directory");
    }
    return open(place, settings);
}

}  // namespace zelvo
