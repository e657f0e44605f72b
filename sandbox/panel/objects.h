// What the rows of all subjects share: how objects and their parents are found, and the commands
// that need nothing but the kind and the parent rule of their row. All throw Refusal.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "panel/command.h"
#include "panel/model.h"
#include "panel/request.h"

namespace sandbox {

inline constexpr char kAdminName[] = "admin";

// ---- finding -------------------------------------------------------------

// "KIND NAME does not exist" when there is none.
Object existing(Model& model, std::string_view kind, const std::string& name);

// A client or reseller of this login.
std::optional<Object> findAccount(Model& model, const std::string& login);
Object existingAccount(Model& model, const std::string& login);

// What an update or a removal works on: the object of the row's kind and the request's name, below
// the parent unless the name is the only one on the panel. In a form without names it is the
// parent.
Object requestedObject(Model& model, const Request& request);

// The account or administrator of this login, as the owner of an object of the kind: clients belong
// to resellers or to the administrator, resellers to the administrator alone, all else to any.
Object ownerFor(Model& model, std::string_view kind, const std::string& login);

// ---- parent rules --------------------------------------------------------

Object theServer(Model& model, const Request& request);
Object theAdmin(Model& model, const Request& request);
Object ownerOption(Model& model, const Request& request);  // -owner, or else the administrator
Object domainOption(Model& model, const Request& request);

inline constexpr ParentRule kServer{"", theServer};
inline constexpr ParentRule kAdmin{"", theAdmin};
// Names that are the only ones on the panel, as logins and domains are, and names of which each
// owner or domain has its own.
inline constexpr ParentRule kOwner{"owner", ownerOption, Unique::kOnPanel};
inline constexpr ParentRule kEachOwner{"owner", ownerOption};
inline constexpr ParentRule kEachDomain{"domain", domainOption};

// ---- numbers -------------------------------------------------------------

// The next number that the utility gives away, each one once; the first one is 1.
long nextNumber(Model& model, std::string_view utility);

// ---- commands ------------------------------------------------------------

// Keeps the options of the request as options of the object; "guid" is its own.
void storeOptions(Model& model, const Object& object, const Request& request);

Answer createObject(Model& model, const Request& request);
Answer updateObject(Model& model, const Request& request);
Answer removeObject(Model& model, const Request& request);
// Hangs the object, whose name must be the only one on the panel, on what the option of the parent
// rule names, which must be given.
Answer moveObject(Model& model, const Request& request);
Answer succeed(Model& model, const Request& request);

// ---- lists ---------------------------------------------------------------

// Refuses the value of a list option that is no change of a list: "add:a,b;del:c", with words of
// these, separated by blanks. An item is not empty.
void checkChanges(const Request& request, std::string_view option, std::string_view words);

}  // namespace sandbox
