#include "panel/system_objects.h"

#include <algorithm>
#include <string_view>

#include "files.h"
#include "panel/command.h"
#include "panel/objects.h"
#include "panel/system_users.h"
#include "words.h"

namespace sandbox {

namespace {

constexpr char kDirectory[] = "directory";

bool isLogin(const std::string& login) {
    constexpr std::size_t kLongest = 32;
    return !login.empty() && login.size() <= kLongest && login.front() != '-' &&
           std::all_of(login.begin(), login.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      std::string_view("._-").find(c) != std::string_view::npos;
           });
}

// A path that /etc/passwd can hold.
bool isShell(const std::string& shell) {
    return shell.starts_with('/') && shell.find_first_of(":\n") == std::string::npos;
}

void checkLogin(Model& model, const std::string& login) {
    if (!isLogin(login)) {
        throw Refusal("no login of the system: " + quoteWord(login));
    }
    if (model.find(kSystemUser, login) || systemUserId(login)) {
        throw Refusal("an account " + quoteWord(login) + " exists already in the system");
    }
}

uid_t nextUserId(Model& model) {
    constexpr long kBeforeFirst = 10000;
    for (;;) {
        const auto id = static_cast<uid_t>(kBeforeFirst + nextNumber(model, kSystem));
        if (!isSystemUserId(id)) {
            return id;
        }
    }
}

Object makeUser(Model& model, const Object& holder, const std::string& login,
                const std::string& home) {
    checkLogin(model, login);
    const Object user = model.insert(kSystemUser, login, holder);
    model.setOption(user, {kSystem, "uid", std::to_string(nextUserId(model))});
    model.setOption(user, {kSystem, "home", home});
    model.setOption(user, {kSystem, "shell", "/bin/false"});
    return user;
}

SystemUser systemUser(Model& model, const Object& user) {
    const auto value = [&](const char* name) {
        return model.option(user, kSystem, name).value_or("");
    };
    return {model.at(user.id).name, static_cast<uid_t>(std::stoul(value("uid"))), value("home"),
            value("shell")};
}

void clearDirectory(Model& model, const Object& holder) {
    const auto path = directoryOf(model, holder);
    if (path && !path->empty()) {
        model.whenKept([directory = *path] { removeTree(directory); });
    }
}

void clearSystem(Model& model, const Object& object) {
    for (const Object& child : model.children(object)) {
        clearSystem(model, child);
    }
    if (object.kind == kSystemUser) {
        model.whenKept([login = object.name] { removeSystemUser(login); });
    }
    clearDirectory(model, object);
}

}  // namespace

std::optional<Object> systemUserOf(Model& model, const Object& holder) {
    for (const Object& child : model.children(holder)) {
        if (child.kind == kSystemUser) {
            return child;
        }
    }
    return std::nullopt;
}

void setSystemUser(Model& model, const Object& holder, const std::string& login,
                   const std::string& shell, const std::string& home) {
    const auto known = systemUserOf(model, holder);
    if (known && !login.empty() && login != known->name) {
        checkLogin(model, login);
        model.setName(*known, login);
    }
    const Object user = known ? *known : makeUser(model, holder, login, home);
    if (!shell.empty()) {
        if (!isShell(shell)) {
            throw Refusal("no shell: " + quoteWord(shell));
        }
        model.setOption(user, {kSystem, "shell", shell});
    }
    model.whenKept([account = systemUser(model, user)] { putSystemUser(account); });
}

std::optional<std::string> directoryOf(Model& model, const Object& holder) {
    return model.option(holder, kSystem, kDirectory);
}

void setDirectory(Model& model, const Object& holder, const std::string& path,
                  void (*make)(const std::string& path, const std::string& owner),
                  const std::string& owner) {
    model.setOption(holder, {kSystem, kDirectory, path});
    if (!path.empty()) {
        model.whenKept([=] { make(path, owner); });
    }
}

void removeDirectory(Model& model, const Object& holder) {
    clearDirectory(model, holder);
    model.setList(holder, kSystem, kDirectory, {});
}

void eraseObject(Model& model, const Object& object) {
    clearSystem(model, object);
    model.erase(object);
}

}  // namespace sandbox
