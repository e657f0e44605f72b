// Whole numbers in the texts of a dump.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace zelvo {

// A text that must be a number and is none. It is no ExTraceable, as the conversion failures of the
// libraries are none: the guards of a domain let it pass.
class NumberConversionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads a signed 64-bit decimal number, with no blanks. what: whose value it is, for the failure.
// Raises NumberConversionError.
std::int64_t wholeNumber(const std::string& text, const std::string& what);

// Runs work that reads such numbers, where a text that is none costs the object at hand and not the
// run. Raises AssertionFailed for it, and what else work raises.
void refuseNonNumbers(const std::function<void()>& work);

}  // namespace zelvo
