#include "xml/xml_text.h"

#include <libxml/chvalid.h>

#include <string_view>

namespace zelvo {

namespace {

const char* const kReplacement = "\xEF\xBF\xBD";

// One character of UTF-8: its code point and the number of its bytes, 0 if there is none.
struct Utf8Char {
    unsigned codePoint = 0;
    size_t length = 0;
};

// The length that the first byte of a character announces, 0 for a byte that begins none.
size_t announcedLength(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return 2;
    }
    if (first >= 0xE0 && first <= 0xEF) {
        return 3;
    }
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

// Reads the first character, in its shortest form only.
Utf8Char readUtf8(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const size_t length = announcedLength(first);
    if (length < 2 || length > text.size()) {
        return {first, length == 1 ? size_t{1} : size_t{0}};
    }
    unsigned codePoint = first & (0x7Fu >> length);
    for (const char c : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) {
            return {};
        }
        codePoint = codePoint << 6 | (byte & 0x3Fu);
    }
    const bool isTooLong =
        (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
    return isTooLong ? Utf8Char{} : Utf8Char{codePoint, length};
}

void appendLatin1(std::string& out, unsigned char byte) {
    out += static_cast<char>(0xC0 | (byte >> 6));
    out += static_cast<char>(0x80 | (byte & 0x3F));
}

// True for what nearly every text is: characters of ASCII that a document can hold.
bool isPlain(const std::string& text) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 || !xmlIsChar_ch(byte)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::string toXmlText(const std::string& text) {
    if (isPlain(text)) {
        return text;
    }
    std::string out;
    for (std::string_view rest = text; !rest.empty();) {
        const Utf8Char character = readUtf8(rest);
        if (character.length == 0) {
            appendLatin1(out, static_cast<unsigned char>(rest.front()));
        } else if (xmlIsCharQ(character.codePoint)) {
            out.append(rest.substr(0, character.length));
        } else {
            out += kReplacement;
        }
        rest.remove_prefix(std::max<size_t>(character.length, 1));
    }
    return out;
}

}  // namespace zelvo
