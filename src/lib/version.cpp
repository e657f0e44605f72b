#include "lib/version.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ostream>

namespace zelvo {

namespace {

constexpr std::size_t kLongestEpoch = 31;
constexpr std::size_t kLongestItem = 255;

bool isEmpty(const char* text) { return text == nullptr || *text == '\0'; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNumber(const char* item) { return isDigit(*item) && *item != '0'; }

std::int32_t valueOf(const char* number) {
    return static_cast<std::int32_t>(strtol(number, nullptr, 10));
}

template <class Value>
int compareValues(Value a, Value b) {
    return static_cast<int>(a > b) - static_cast<int>(a < b);
}

const char* itemOf(const std::vector<std::string>& items, std::size_t n) {
    return n < items.size() ? items[n].c_str() : nullptr;
}

void display(FILE* file, const std::vector<std::string>& items) {
    for (const std::string& item : items) {
        fprintf(file, isNumber(item.c_str()) ? "[%s] " : "\"%s\" ", item.c_str());
    }
}

}  // namespace

int Version::setVersionData(const char* text) {
    if (isEmpty(text)) {
        return -1;
    }
    versionText_ = text;
    const std::size_t colon = versionText_.find(':');
    hasEpoch_ = colon != std::string::npos;
    epoch_ = 0;
    if (hasEpoch_) {
        epoch_ =
            strtol(versionText_.substr(0, std::min(colon, kLongestEpoch)).c_str(), nullptr, 10);
    }
    parseVersionData(versionItems_, text + (hasEpoch_ ? colon + 1 : 0));
    return 0;
}

int Version::setReleaseData(const char* text) {
    if (isEmpty(text)) {
        return -1;
    }
    releaseText_ = text;
    parseVersionData(releaseItems_, text);
    return 0;
}

int Version::setVersionReleaseData(const char* text) {
    if (isEmpty(text)) {
        return -1;
    }
    const char* const dash = strrchr(text, '-');
    if (dash == nullptr) {
        return setVersionData(text);
    }
    const int version = setVersionData(std::string(text, dash).c_str());
    const int release = setReleaseData(dash + 1);
    return std::min(version, release);
}

const char* Version::getVersionItem(std::size_t n) const { return itemOf(versionItems_, n); }

const char* Version::getReleaseItem(std::size_t n) const { return itemOf(releaseItems_, n); }

void Version::displayVersion(FILE* file) const {
    if (versionText_.empty() && releaseText_.empty()) {
        fputs("[ --- empty version data --- ]", file);
        return;
    }
    if (hasEpoch_) {
        fprintf(file, "[%ld] : ", epoch_);
    }
    display(file, versionItems_);
    if (!releaseItems_.empty()) {
        fputs(" [ --- ] ", file);
        display(file, releaseItems_);
    }
}

std::ostream& operator<<(std::ostream& stream, const Version& version) {
    stream << version.versionText_;
    if (!version.releaseText_.empty()) {
        stream << '-' << version.releaseText_;
    }
    return stream;
}

int Version::compareEpochs(const Version& other) const {
    if (hasEpoch_ != other.hasEpoch_) {
        return hasEpoch_ ? 1 : -1;
    }
    return compareValues(epoch_, other.epoch_);
}

int Version::compareVersionItems(const Version& other) const {
    return compareLists(versionItems_, other.versionItems_);
}

int Version::compareReleaseItems(const Version& other) const {
    return compareLists(releaseItems_, other.releaseItems_);
}

int Version::parseVersionData(Items& items, const char* text) const {
    items.clear();
    bool isOpen = false;
    for (; *text != '\0'; ++text) {
        if (*text == '.') {
            isOpen = false;
            continue;
        }
        if (!isOpen || isDigit(*text) != isDigit(items.back().front())) {
            items.emplace_back();
            isOpen = true;
        }
        if (items.back().size() < kLongestItem) {
            items.back() += *text;
        }
    }
    return static_cast<int>(items.size());
}

int Version::compareAll(const Version& other) const {
    if (const int epochs = compareEpochs(other); epochs != 0) {
        return epochs;
    }
    if (const int versions = compareVersionItems(other); versions != 0) {
        return versions;
    }
    return compareReleaseItems(other);
}

int Version::compareItems(const char* a, const char* b) const {
    if (isNumber(a) != isNumber(b)) {
        return isNumber(a) ? 1 : -1;
    }
    return isNumber(a) ? compareValues(valueOf(a), valueOf(b)) : strcmp(a, b);
}

int Version::compareLists(const Items& mine, const Items& others) const {
    const std::size_t shared = std::min(mine.size(), others.size());
    for (std::size_t i = 0; i < shared; ++i) {
        if (const int items = compareItems(mine[i].c_str(), others[i].c_str()); items != 0) {
            return items;
        }
    }
    return compareValues(mine.size(), others.size());
}

}  // namespace zelvo
