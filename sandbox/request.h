// The arguments of one utility call, taken apart into the form that all
// utilities share: a command, for most of them a name, then options with a
// value each.
#pragma once

#include "call.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sandbox {

enum class Shape {
    kName,     // COMMAND NAME [-option value]...
    kOptions,  // COMMAND [-option value]...
};

struct Request {
    Request(const Call& from, Shape shape);  // throws Refusal for arguments of another form

    // The value of an option (its last one), or null.
    const std::string* option(std::string_view wanted) const;

    const Call& call;
    std::string command;
    std::string name;
    // Names without the leading "-". A password's value is "plain" or
    // "encrypted": how it was given, never what it is.
    std::vector<std::pair<std::string, std::string>> options;

  private:
    void addOption(const std::string& word, const std::string& value);
};

}  // namespace sandbox
