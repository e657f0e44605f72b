#include "lib/idn.h"

#include <idna.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

// A conversion of libidn that takes UTF-8, whatever the locale.
using Conversion = int (*)(const char* input, char** output, int flags);

std::string convert(const std::string& name, Conversion conversion) {
    char* output = nullptr;
    const int code = conversion(name.c_str(), &output, 0);
    const std::unique_ptr<char, decltype(&free)> owner(output, &free);
    if (code != IDNA_SUCCESS) {
        throw zelvo::idn::IdnaError(code);
    }
    if (output == nullptr) {
        throw std::bad_alloc();
    }
    return output;
}

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

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

std::string toAscii(const std::string& name) {
    std::string ascii = convert(name, idna_to_ascii_8z);
    // libidn folds the case of international labels only.
    std::transform(ascii.begin(), ascii.end(), ascii.begin(), toLower);
    return ascii;
}

std::string toUtf8(const std::string& name) { return convert(name, idna_to_unicode_8z8z); }

}  // namespace zelvo::idn
