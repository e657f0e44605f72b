// Which bytes a shell takes literally, and the text that stands for one argument. Used to show
// commands to people: children are started with argument vectors, never through a shell.
#pragma once

#include <array>
#include <string>

// What a byte (the index, as unsigned char) needs in shell text: '-' nothing, '*' a backslash in
// front, 'n' single quotes around.
extern const std::array<char, 256> shell_escape_chars;

// Returns 1 for null, for an empty text and for a text of plain bytes only, otherwise 0.
int check_shell_arg_nothrow(const char* text);

namespace zelvo {

// Returns the argument with every byte that needs it quoted. An empty argument stays empty.
std::string sh_quote(const std::string& argument);

// Raises std::runtime_error "Internal error: bad escape_chars value" if check_shell_arg_nothrow
// refuses the argument.
void check_shell_arg(const std::string& argument);

}  // namespace zelvo
