// Whatever the bytes: as text they decode to what their symbols alone decode to, and encoded they
// come back.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "lib/base64.h"

namespace {

constexpr std::string_view kSymbols =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// RFC 4648, section 4, bit by bit.
std::string encode(const std::string& bytes) {
    std::string text;
    for (std::size_t bit = 0; bit < bytes.size() * 8; bit += 6) {
        std::size_t symbol = 0;
        for (std::size_t i = bit; i < bit + 6; ++i) {
            const std::size_t byte =
                i / 8 < bytes.size() ? static_cast<unsigned char>(bytes[i / 8]) : 0;
            symbol = symbol << 1 | (byte >> (7 - i % 8) & 1);
        }
        text += kSymbols[symbol];
    }
    return text.append((4 - text.size() % 4) % 4, '=');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::cerr.setstate(std::ios::badbit);  // one word for each bad symbol is too many here
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::string symbols;
    std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(symbols),
                 [](char c) { return c == '=' || kSymbols.find(c) != std::string_view::npos; });
    if (zelvo::base64_decode(encode(bytes)) != bytes ||
        zelvo::base64_decode(bytes) != zelvo::base64_decode(symbols)) {
        abort();
    }
    return 0;
}
