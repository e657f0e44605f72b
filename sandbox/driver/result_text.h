// Documents and streams of a run in the form in which tests compare them.
#pragma once

#include <string>

// A result document whose places hold still: the text of every "line" is "N",
// and a "context" is the bare name of the function, without its return type,
// arguments and the outer namespace.
std::string normalizeResult(const std::string& document);

// The first line in which a sanitizer or valgrind complains, or an empty text.
std::string findReport(const std::string& err);
