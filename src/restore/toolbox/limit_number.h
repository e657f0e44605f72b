// The numbers that limits hold.
#pragma once

#include <stdexcept>
#include <string>

namespace zelvo {

// A limit whose text is no number. It is no ExTraceable, as the conversion failures of the
// libraries are none: the guards of a domain let it pass.
class LimitConversionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The decimal form of a limit that must be a number. What is too much is for the utility to say;
// -1 stands for "no limit". text: a signed 64-bit decimal number, with no blanks. what: whose limit
// it is, for the failure. Raises LimitConversionError.
std::string limitNumber(const std::string& text, const std::string& what);

}  // namespace zelvo
