// What --help prints.
#pragma once

namespace zelvo {

// The whole text, its last line feed included. Callers compare it to the byte: the padding and the
// tabs belong to it.
extern const char* const helpText;

}  // namespace zelvo
