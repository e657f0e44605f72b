// The numbers that limits hold.
#pragma once

#include <string>

namespace zelvo {

// The decimal form of a limit that must be a number. What is too much is for the utility to say;
// -1 stands for "no limit". text: as wholeNumber reads it. what: whose limit it is, for the
// failure. Raises NumberConversionError.
std::string limitNumber(const std::string& text, const std::string& what);

}  // namespace zelvo
