// Whatever the header: it decodes or its character set is unknown, and text in UTF-8 survives its
// way into encoded words, which keep to ASCII and to their length, and back.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "lib/iconv_recode.h"
#include "lib/rfc1522.h"

namespace {

bool isUtf8(const std::string& text) {
    try {
        return zelvo::iconvRecode("utf-8", "utf-8", text, false) == text;
    } catch (const std::runtime_error&) {
        return false;
    }
}

bool isWellFormed(const std::string& encoded, const std::string& text) {
    std::istringstream stream(encoded);
    for (std::string word; encoded != text && std::getline(stream, word, ' ');) {
        if (word.size() > 75) return false;
    }
    return std::all_of(encoded.begin(), encoded.end(), [](char c) { return c >= ' '; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::cerr.setstate(std::ios::badbit);  // one word for each bad base64 symbol is too many here
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        zelvo::rfc1522::decode(text);
    } catch (const std::runtime_error&) {
        // an unknown character set
    }
    const std::string encoded = zelvo::rfc1522::encode(text);
    if (!isWellFormed(encoded, text) || (isUtf8(text) && zelvo::rfc1522::decode(encoded) != text)) {
        abort();
    }
    return 0;
}
