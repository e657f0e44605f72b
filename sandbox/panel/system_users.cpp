#include "panel/system_users.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "files.h"
#include "words.h"

namespace sandbox {

namespace {

constexpr char kAccounts[] = "/etc/passwd";
constexpr char kNewAccounts[] = "/etc/passwd.new";
constexpr char kGroups[] = "/etc/group";
constexpr char kCustomers[] = "qrdcln";

// A line of either file: the name, a password that is none, and the id.
struct Entry {
    std::string_view line;
    std::string_view name;
    unsigned id = 0;
};

Entry entryIn(std::string_view line) {
    const auto fields = splitText(line, ':');
    Entry entry{line, fields[0]};
    if (fields.size() > 2) {
        std::from_chars(fields[2].data(), fields[2].data() + fields[2].size(), entry.id);
    }
    return entry;
}

// The entries lie in the text.
std::vector<Entry> entriesIn(std::string_view text) {
    std::vector<Entry> entries;
    for (const std::string_view line : splitText(text, '\n')) {
        if (!line.empty()) {
            entries.push_back(entryIn(line));
        }
    }
    return entries;
}

std::optional<unsigned> idIn(const char* file, const std::string& name) {
    const std::string text = readFile(file).value_or("");
    for (const Entry& entry : entriesIn(text)) {
        if (entry.name == name) {
            return entry.id;
        }
    }
    return std::nullopt;
}

void writeAccounts(const std::string& text) {
    const Fd fd(open(kNewAccounts, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (!fd || fchmod(fd.get(), 0644) != 0) {
        failWithErrno(std::string("cannot make ") + kNewAccounts);
    }
    writeAll(fd.get(), text);
    if (std::rename(kNewAccounts, kAccounts) != 0) {
        failWithErrno(std::string("cannot replace ") + kAccounts);
    }
}

// All accounts but those that the rule takes, a line each.
template <typename Rule>
std::string accountsWithout(Rule isTaken) {
    const std::string text = readFile(kAccounts).value_or("");
    std::string kept;
    for (const Entry& entry : entriesIn(text)) {
        if (!isTaken(entry)) {
            kept.append(entry.line) += '\n';
        }
    }
    return kept;
}

}  // namespace

std::optional<uid_t> systemUserId(const std::string& login) { return idIn(kAccounts, login); }

bool isSystemUserId(uid_t id) {
    const std::string text = readFile(kAccounts).value_or("");
    for (const Entry& entry : entriesIn(text)) {
        if (entry.id == id) {
            return true;
        }
    }
    return false;
}

gid_t systemGroupId(const std::string& name) {
    if (const auto id = idIn(kGroups, name)) {
        return *id;
    }
    throw std::runtime_error("there is no group " + name);
}

void putSystemUser(const SystemUser& user) {
    const std::string ids =
        std::to_string(user.id) + ":" + std::to_string(systemGroupId(kCustomers));
    writeAccounts(accountsWithout([&](const Entry& entry) { return entry.id == user.id; }) +
                  user.login + ":x:" + ids + "::" + user.home + ":" + user.shell + "\n");
}

void removeSystemUser(const std::string& login) {
    writeAccounts(accountsWithout([&](const Entry& entry) { return entry.name == login; }));
}

}  // namespace sandbox
