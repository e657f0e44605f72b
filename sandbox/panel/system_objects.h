// What objects of the panel have in the system: an account, and a directory. The model knows them
// at once, the system when the model keeps its changes.
#pragma once

#include <optional>
#include <string>

#include "panel/model.h"

namespace sandbox {

struct Request;

// An account is an object below the one whose account it is.
inline constexpr char kSystemUser[] = "sysuser";
// The tool of the options that the panel itself sets: "directory" of an object, and "uid", "home"
// and "shell" of an account.
inline constexpr char kSystem[] = "system";

std::optional<Object> systemUserOf(Model& model, const Object& holder);

// Makes the account or changes it: an empty login or shell leaves it as it is, and a new account
// has /bin/false. Throws Refusal for a login that is another's, for one that the system cannot
// have, and for a new account without one.
void setSystemUser(Model& model, const Object& holder, const std::string& login,
                   const std::string& shell, const std::string& home);

// The directory of an object that has one; it may be empty, where none is made.
std::optional<std::string> directoryOf(Model& model, const Object& holder);

// Has the directory made when the changes are kept, for that account. An empty path is remembered
// alone.
void setDirectory(Model& model, const Object& holder, const std::string& path,
                  void (*make)(const std::string& path, const std::string& owner),
                  const std::string& owner);

// Takes the directory away.
void removeDirectory(Model& model, const Object& holder);

// The object with all below, their accounts and their directories.
void eraseObject(Model& model, const Object& object);

}  // namespace sandbox
