#include "lib/shell_quote.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace {

char markOf(char byte) { return shell_escape_chars[static_cast<unsigned char>(byte)]; }

constexpr std::array<char, 256> makeMarks() {
    std::array<char, 256> marks{};
    for (char& mark : marks) {
        mark = '-';
    }
    for (const char byte : std::string_view("\t \"#$&'()*;<>?[\\`|~")) {
        marks[static_cast<unsigned char>(byte)] = '*';
    }
    marks['\n'] = 'n';
    return marks;
}

}  // namespace

constinit const std::array<char, 256> shell_escape_chars = makeMarks();

int check_shell_arg_nothrow(const char* text) {
    if (text == nullptr) {
        return 1;
    }
    const std::string_view bytes(text);
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return markOf(byte) == '-'; })
               ? 1
               : 0;
}

namespace zelvo {

std::string sh_quote(const std::string& argument) {
    std::string quoted;
    quoted.reserve(argument.size());
    for (const char byte : argument) {
        switch (markOf(byte)) {
            case '*':
                quoted += '\\';
                quoted += byte;
                break;
            case 'n':
                quoted += '\'';
                quoted += byte;
                quoted += '\'';
                break;
            default:
                quoted += byte;
        }
    }
    return quoted;
}

void check_shell_arg(const std::string& argument) {
    if (check_shell_arg_nothrow(argument.c_str()) == 0) {
        throw std::runtime_error("Internal error: bad escape_chars value");
    }
}

}  // namespace zelvo
