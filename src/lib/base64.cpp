#include "lib/base64.h"

#include <cstddef>
#include <iostream>
#include <string_view>

namespace zelvo {

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string base64_decode(const std::string& text) {
    std::string bytes;
    unsigned bits = 0;
    int bitCount = 0;
    for (const char symbol : text) {
        if (symbol == '=') {
            break;
        }
        const std::size_t value = kAlphabet.find(symbol);
        if (value == std::string_view::npos) {
            std::cerr << "Bad base64 symbol: " << symbol;
            continue;
        }
        bits = (bits << 6 | static_cast<unsigned>(value)) & 0xFFFF;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes += static_cast<char>(bits >> bitCount & 0xFF);
        }
    }
    return bytes;
}

}  // namespace zelvo
