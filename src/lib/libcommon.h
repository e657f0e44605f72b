// Small tests on texts and paths.
#pragma once

// True when the real path of child (realpath(3): links followed, no "." or "..") is that of parent
// or lies below it. False when either cannot be resolved.
bool issubdir(const char* parent, const char* child);

// True for a null pointer and for "".
bool isempty(const char* text);

// True when the text is not empty and all its characters are decimal digits.
bool is_number(const char* text);
