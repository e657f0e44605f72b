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

// Reads a limit. text: a signed 64-bit decimal number, with no blanks. what: whose limit it is, for
// the failure. Raises LimitConversionError.
long long parseLimit(const std::string& text, const std::string& what);

// The bounds of a size in megabytes and in kilobytes. No bound is enforced: -1 stands for "no
// limit", and what is too much is for the utility to say. Return the value as it was.
long long validateMbLimit(long long value, const std::string& what);
long long validateKbLimit(long long value, const std::string& what);

}  // namespace zelvo
