// The one quoting rule of the sandbox's texts: journal lines, set-up lines and fault rules are
// words separated by blanks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct Word {
    std::string text;
    bool quoted = false;      // it starts with a quote or a backslash
    bool endsQuoted = false;  // its last character stood in quotes or behind a backslash
};

// A word that is not empty and holds only letters, digits, any of _@%+=:,./- and well-formed UTF-8
// from U+00A0 on stands as it is. Every other word stands between single quotes, with these
// escapes: \\ \' \n \t \r \xHH.
std::string quoteWord(std::string_view word);

// Takes what quoteWord gives and what people write: single and double quotes (with the escapes
// above in both), a backslash before one character outside quotes, "#" at the start of a word for a
// comment up to the end, and ";" as a word of its own. Throws std::runtime_error for an open quote
// or an escape that does not exist.
std::vector<Word> splitWords(std::string_view line);

// The parts between the separators, one more than there are of these.
std::vector<std::string_view> splitText(std::string_view text, char separator);

}  // namespace sandbox
