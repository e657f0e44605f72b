// A command of a utility as one row of a table: the form of its arguments, what it works on, and
// how it is answered. Each subject of the panel contributes its rows.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "utilities.h"

namespace sandbox {

class Model;
struct Object;
struct Request;

struct Answer {
    int status = 0;
    std::string out;
    std::string err;
};

// Why a utility did not do as it was told; becomes its line on standard error and exit code 1.
class Refusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The arguments of a command.
enum class Shape {
    kBare,     // none, the word included
    kOptions,  // WORD [-option [value]]...
    kName,     // WORD NAME [-option [value]]...
    kWords,    // WORD NAME ARGUMENT...
    kAlone,    // NAME, without a word
};

// Where a name is the only one of its kind.
enum class Unique { kOnPanel, kBelowParent };

// How the parent of an object is found.
struct ParentRule {
    // The option that names the parent, without "-". It is no option of the object itself.
    std::string_view option;
    // Throws Refusal when there is no such parent, or when it cannot have such a child.
    Object (*find)(Model& model, const Request& request) = nullptr;
    Unique unique = Unique::kBelowParent;
};

struct Command {
    std::string_view utility;
    std::string_view word;  // its first argument; empty for Shape::kBare and Shape::kAlone
    Shape shape;
    std::string_view kind;  // of the object that it works on; empty when there is none
    ParentRule parent;
    // Carries the command out. Throws Refusal.
    Answer (*run)(Model& model, const Request& request);
    // The answer of a panel without a model; null when success without a word will do.
    Answer (*runWithoutModel)() = nullptr;
    // Options without "-", separated by blanks: those that stand without a value, and those of
    // which every value is kept, in the order in which they came. Of any other option the last
    // value counts.
    std::string_view valueless = {};
    std::string_view lists = {};
};

using Commands = std::span<const Command>;

// The rows of one subject. A row for a utility that no panel has does not compile.
template <std::size_t N>
consteval Commands rowsOf(const Command (&rows)[N]) {
    for (const Command& row : rows) {
        if (!isOnPanel(row.utility)) {
            throw std::logic_error("the panel has no such utility");
        }
    }
    return rows;
}

Commands accountCommands();
Commands addressCommands();
Commands databaseCommands();
Commands domainCommands();
Commands hostingCommands();
Commands mailCommands();
Commands mailListCommands();
Commands serverCommands();
Commands serverSettingsCommands();
Commands serviceCommands();
Commands siteAppCommands();
Commands templateCommands();
Commands zoneCommands();

}  // namespace sandbox
