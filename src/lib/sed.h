// Rewriting a file in place with the system's sed.
#pragma once

// Applies a sed expression (a POSIX basic regular expression inside) to a file. The result is
// written to "FILE.tmp" first and takes the file's place then; owner and mode of a regular file
// are kept. A symbolic link is read through and replaced by a file.
// Returns 0, or -1 with a message and the file as it was. Owner or mode that cannot be restored
// give only a warning.
int run_sed_cmd(const char* expression, const char* file);

// The same with extended regular expressions.
int run_extended_sed_cmd(const char* expression, const char* file);
