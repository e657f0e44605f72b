// The arguments of one utility call, taken apart into the form that its command takes.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "call.h"
#include "panel/command.h"

namespace sandbox {

struct Request {
    // Both must live as long as the request. Throws Refusal for arguments of another form.
    Request(const Call& from, const Command& as);

    // The value of an option (its last one), or null.
    const std::string* option(std::string_view wanted) const;
    // As option, but throws Refusal for an option that was not given.
    const std::string& neededOption(std::string_view wanted) const;

    const Call& call;
    const Command& command;
    std::string name;  // empty in a form without one
    // Names without the leading "-"; one without a value has "true". A password's value is "plain"
    // or "encrypted": how it was given, never what it is.
    std::vector<std::pair<std::string, std::string>> options;
    std::vector<std::string> words;  // what follows the name in Shape::kWords

  private:
    using Words = std::vector<std::string>::const_iterator;
    void readOptions(Words word, Words end);
    void addOption(const std::string& option, const std::string& value);
};

// Whether the text, words separated by blanks, holds the word.
bool holdsWord(std::string_view text, std::string_view word);

}  // namespace sandbox
