#include "panel/system_users.h"

#include <charconv>
#include <string_view>
#include <vector>

#include "files.h"
#include "words.h"

namespace sandbox {

namespace {

constexpr char kAccounts[] = "/etc/passwd";

unsigned numberIn(std::string_view text) {
    unsigned number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

std::optional<Ids> systemUserIds(const std::string& login) {
    const std::string text = readFile(kAccounts).value_or("");
    for (const std::string_view line : splitText(text, '\n')) {
        const auto fields = splitText(line, ':');
        if (fields.size() > 3 && fields[0] == login) {
            return Ids{numberIn(fields[2]), numberIn(fields[3])};
        }
    }
    return std::nullopt;
}

}  // namespace sandbox
