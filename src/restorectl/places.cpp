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

void takeVariable(const std::string& name, std::string& value) {
    if (const char* const text = std::getenv(name.c_str())) {
        if (value.empty()) {
            value = text;
        }
        unsetenv(name.c_str());
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

Place readPlace(const std::string& text, const std::string& file, const std::string& loginVariable,
                const std::string& passwordVariable) {
    Place place;
    const std::string login = isFtp(text) ? loginOfUrl(text) : "";
    if (login.find(':') != std::string::npos) {
        throw UsageError("a password does not belong into a URL, where others see it: use " +
                         passwordVariable + " or a credentials file");
    }
    if (!file.empty()) {
        readCredentials(file, place);
    }
    takeVariable(loginVariable, place.login);
    takeVariable(passwordVariable, place.password);
    if (!login.empty()) {
        place.login = urldecode(login);
    }
    if (isFtp(text)) {
        place.url = urlWithoutLogin(text);
    } else if (!text.empty()) {
        place.url = std::filesystem::absolute(text).string();
    }
    return place;
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
