#include "exec/environment.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace zelvo {

namespace {

bool isNamed(const char* entry, const std::string& name) {
    return strncmp(entry, name.c_str(), name.size()) == 0 && entry[name.size()] == '=';
}

bool isBasic(const char* entry) {
    const std::string_view text(entry);
    const auto isOneOf = [&](const char* name) { return isNamed(entry, name); };
    constexpr std::array kNames{"PATH", "HOME", "TZ", "LANG"};
    return text.starts_with("LC_") || std::any_of(kNames.begin(), kNames.end(), isOneOf);
}

}  // namespace

EnvironmentVector::EnvironmentVector(const Environment& additions, Inherited inherited) {
    // The entries point into these strings, so they must not move.
    owned_.reserve(additions.size());
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (inherited == Inherited::kAll || isBasic(*entry)) {
            entries_.push_back(*entry);
        }
    }
    for (const auto& [name, value] : additions) {
        set(name.c_str(), value.c_str());
        if (error_ != 0) {
            break;
        }
    }
    entries_.push_back(nullptr);
}

const char* EnvironmentVector::find(const std::string& name) const {
    for (const char* entry : entries_) {
        if (entry != nullptr && isNamed(entry, name)) {
            return entry + name.size() + 1;
        }
    }
    return nullptr;
}

void EnvironmentVector::set(const char* name, const char* value) {
    if (*name == '\0' || strchr(name, '=') != nullptr) {
        error_ = EINVAL;
        return;
    }
    char* const added = owned_.emplace_back(name).append("=").append(value).data();
    for (char*& entry : entries_) {
        if (isNamed(entry, name)) {
            entry = added;
            return;
        }
    }
    entries_.push_back(added);
}

}  // namespace zelvo
