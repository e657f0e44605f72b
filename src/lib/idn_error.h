// Why an international domain name was refused.
#pragma once

#include <exception>

// The result of the last conversion of the plain functions in lib/idn.h, as libidn gives it
// (Idna_rc): 0 for success.
extern int idn_errno;

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

}  // namespace zelvo::idn
