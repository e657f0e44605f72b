#include "lib/idn_error.h"

#include <idna.h>

int idn_errno = IDNA_SUCCESS;

const char* idn_strerror(int code) {
    switch (code) {
        case IDNA_SUCCESS:
            return "Success";
        case IDNA_STRINGPREP_ERROR:
            return "Stringprep error";
        case IDNA_PUNYCODE_ERROR:
            return "Punycode error";
        case IDNA_CONTAINS_NON_LDH:
            return "Contains non-LDH characters";
        case IDNA_CONTAINS_MINUS:
            return "Contains minus";
        case IDNA_INVALID_LENGTH:
            return "Invalid length";
        case IDNA_NO_ACE_PREFIX:
            return "ACE prefix not found";
        case IDNA_ROUNDTRIP_VERIFY_ERROR:
            return "Verify error";
        case IDNA_CONTAINS_ACE_PREFIX:
            return "ACE prefix found";
        case IDNA_ICONV_ERROR:
            return "Iconv error";
        case IDNA_MALLOC_ERROR:
            return "Cannot allocate buffer";
        default:
            return "Unknown error";
    }
}

namespace zelvo::idn {

const char* IdnaError::what() const noexcept { return idn_strerror(code_); }

}  // namespace zelvo::idn
