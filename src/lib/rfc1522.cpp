#include "lib/rfc1522.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

#include "lib/base64.h"
#include "lib/iconv_recode.h"

namespace zelvo::rfc1522 {

namespace {

constexpr std::string_view kHead = "=?utf-8?Q?";
constexpr std::string_view kTail = "?=";
constexpr std::string_view kBlanks = " \t";
// RFC 2047, section 2: an encoded word has at most 75 characters.
constexpr std::size_t kRoom = 75 - kHead.size() - kTail.size();

bool isBlank(char c) { return kBlanks.find(c) != std::string_view::npos; }

// More characters than the standard needs, so that the text is safe in any part of a header.
bool rfc1522_nonprintable(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte >= 0x80 ||
           std::string_view("!\"()*+-/=?_").find(c) != std::string_view::npos;
}

std::string qp_encode(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        if (rfc1522_nonprintable(c)) {
            char code[4];
            snprintf(code, sizeof(code), "=%.2X", static_cast<unsigned char>(c));
            encoded += code;
        } else {
            encoded += c == ' ' ? '_' : c;
        }
    }
    return encoded;
}

bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Moves a place in the text back to the start of the UTF-8 character there, if it is one.
std::size_t characterStart(std::string_view text, std::size_t place) {
    std::size_t start = place;
    while (start > 0 && place - start < 3 && continuesCharacter(text[start])) {
        --start;
    }
    return start > 0 && !continuesCharacter(text[start]) ? start : place;
}

// Returns how much of the text goes into the next encoded word.
std::size_t wordLength(std::string_view text) {
    std::size_t used = 0;
    std::size_t behindBlank = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        used += rfc1522_nonprintable(text[i]) ? 3 : 1;
        if (used > kRoom) {
            return behindBlank > 0 ? behindBlank : characterStart(text, i);
        }
        behindBlank = isBlank(text[i]) ? i + 1 : behindBlank;
    }
    return text.size();
}

std::optional<unsigned> hexValue(char c) {
    constexpr std::string_view kDigits = "0123456789ABCDEFabcdef";
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) {
        return std::nullopt;
    }
    return static_cast<unsigned>(digit < 16 ? digit : digit - 6);
}

// A "=" without two hexadecimal digits behind it stays as it is.
std::string qDecode(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto high = i + 2 < text.size() ? hexValue(text[i + 1]) : std::nullopt;
        const auto low = high ? hexValue(text[i + 2]) : std::nullopt;
        if (text[i] == '=' && low) {
            bytes += static_cast<char>(*high << 4 | *low);
            i += 2;
        } else {
            bytes += text[i] == '_' ? ' ' : text[i];
        }
    }
    return bytes;
}

// The places of the parts of an encoded word, "=?CHARSET?ENCODING?TEXT?=".
struct Parts {
    std::string_view charset;
    std::string_view encoding;
    std::string_view text;
    std::string_view rest;  // what stands behind the encoded word without a blank
};

// Returns what stands before the mark and takes it and the mark from the rest; nothing when there
// is none.
std::optional<std::string_view> cutAt(std::string_view mark, std::string_view& rest) {
    const std::size_t place = rest.find(mark);
    if (place == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view part = rest.substr(0, place);
    rest.remove_prefix(place + mark.size());
    return part;
}

std::optional<Parts> partsOf(std::string_view word) {
    if (!word.starts_with("=?")) {
        return std::nullopt;
    }
    std::string_view rest = word.substr(2);
    const auto charset = cutAt("?", rest);
    const auto encoding = charset ? cutAt("?", rest) : std::nullopt;
    const auto text = encoding ? cutAt(kTail, rest) : std::nullopt;
    if (!text || charset->empty() || encoding->empty()) {
        return std::nullopt;
    }
    return Parts{*charset, *encoding, *text, rest};
}

std::string rfc1522_decode_word(const Parts& word) {
    const bool isQ = word.encoding == "q" || word.encoding == "Q";
    const std::string bytes = isQ ? qDecode(word.text) : base64_decode(std::string(word.text));
    return iconvRecode(std::string(word.charset), "utf-8", bytes, true).append(word.rest);
}

}  // namespace

std::string encode(const std::string& text) {
    if (std::none_of(text.begin(), text.end(), rfc1522_nonprintable)) {
        return text;
    }
    std::string encoded;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t length = wordLength(rest);
        encoded.append(encoded.empty() ? "" : " ").append(kHead);
        encoded.append(qp_encode(rest.substr(0, length))).append(kTail);
        rest.remove_prefix(length);
    }
    return encoded;
}

std::string decode(const std::string& text) {
    std::string decoded;
    bool behindEncoded = false;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = std::min(text.find_first_not_of(kBlanks, i), text.size());
        const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
        const std::string word = text.substr(start, end - start);
        const std::optional<Parts> parts = partsOf(word);
        if (!behindEncoded || !parts) {
            decoded.append(text, i, start - i);
        }
        decoded += parts ? rfc1522_decode_word(*parts) : word;
        behindEncoded = parts && parts->rest.empty();
        i = end;
    }
    return decoded;
}

}  // namespace zelvo::rfc1522
