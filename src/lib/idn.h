// International domain names (IDNA2003, RFC 3490): UTF-8 to ASCII and back, whatever the locale.
#pragma once

#include <exception>
#include <string>

// Returns the words for a result of libidn (Idna_rc), "Unknown error" for a number it does not
// have.
const char* idn_strerror(int code);

namespace zelvo::idn {

// A name that libidn refuses.
class IdnaError : public std::exception {
  public:
    // code: the result of libidn, not 0.
    explicit IdnaError(int code) : code_(code) {}

    int code() const { return code_; }

    // The words of idn_strerror.
    const char* what() const noexcept override;

  private:
    int code_;
};

// Returns the ASCII form (RFC 3490, ToASCII for each label) of a domain name in UTF-8, in lower
// case. Raises IdnaError for a name that has no such form, std::bad_alloc without memory.
std::string toAscii(const std::string& name);

// Returns the UTF-8 form (RFC 3490, ToUnicode for each label) of a domain name. A label that cannot
// be decoded stays as it is. Raises IdnaError for what is not UTF-8, std::bad_alloc without memory.
std::string toUtf8(const std::string& name);

}  // namespace zelvo::idn
