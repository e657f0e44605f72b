#include "words.h"

#include <cstdint>
#include <stdexcept>

namespace sandbox {

namespace {

bool isPlainAscii(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c != 0 &&
            std::string_view("_@%+=:,./-").find(static_cast<char>(c)) != std::string_view::npos);
}

struct Sequence {
    std::size_t size = 0;  // 0: not well-formed
    std::uint32_t point = 0;
};

// Reads one multi-byte character. Overlong forms, surrogates and what lies beyond Unicode are not
// well-formed.
Sequence readUtf8(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (size == 0 || lead > 0xF4 || text.size() < size) {
        return {};
    }
    std::uint32_t point = lead & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) {
            return {};
        }
        point = (point << 6U) | (next & 0x3FU);
    }
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (point < kSmallest[size] || surrogate || point > 0x10FFFF) {
        return {};
    }
    return {size, point};
}

// Size of the printable character beyond ASCII at the start of the text, or 0.
std::size_t printableUtf8(std::string_view text) {
    const Sequence sequence = readUtf8(text);
    return sequence.point >= 0xA0 ? sequence.size : 0;
}

bool standsBare(std::string_view word) {
    if (word.empty()) {
        return false;
    }
    for (std::size_t i = 0; i < word.size();) {
        if (isPlainAscii(static_cast<unsigned char>(word[i]))) {
            ++i;
            continue;
        }
        const std::size_t size = printableUtf8(word.substr(i));
        if (size == 0) {
            return false;
        }
        i += size;
    }
    return true;
}

void appendHex(std::string& out, unsigned char c) {
    constexpr char kDigits[] = "0123456789abcdef";
    out += "\\x";
    out += kDigits[c >> 4U];
    out += kDigits[c & 0xFU];
}

void appendEscaped(std::string& out, char c) {
    switch (c) {
        case '\\':
            out += "\\\\";
            return;
        case '\'':
            out += "\\'";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\t':
            out += "\\t";
            return;
        case '\r':
            out += "\\r";
            return;
        default:
            break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7F) {
        appendHex(out, byte);
    } else {
        out += c;
    }
}

class Splitter {
  public:
    explicit Splitter(std::string_view line) : rest_(line) {}

    std::vector<Word> run() {
        while (skipBlanks()) {
            readWord();
        }
        return std::move(words_);
    }

  private:
    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    bool skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
        return !rest_.empty() && rest_.front() != '#';
    }

    char take() {
        if (rest_.empty()) {
            throw std::runtime_error("the line ends within a quoted word");
        }
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    void readWord() {
        if (rest_.front() == ';') {
            words_.push_back({std::string(1, take()), false, false});
            return;
        }
        Word word;
        word.quoted = rest_.front() == '\'' || rest_.front() == '"' || rest_.front() == '\\';
        while (!rest_.empty() && !isBlank(rest_.front()) && rest_.front() != ';') {
            const char c = take();
            word.endsQuoted = c == '\'' || c == '"' || c == '\\';
            if (c == '\'' || c == '"') {
                readQuoted(word.text, c);
            } else {
                word.text += c == '\\' ? take() : c;
            }
        }
        words_.push_back(std::move(word));
    }

    void readQuoted(std::string& text, char quote) {
        for (char c = take(); c != quote; c = take()) {
            text += c == '\\' ? readEscape() : c;
        }
    }

    char readEscape() {
        const char c = take();
        switch (c) {
            case 'n':
                return '\n';
            case 't':
                return '\t';
            case 'r':
                return '\r';
            case '\\':
            case '\'':
            case '"':
                return c;
            case 'x': {
                const unsigned high = readHexDigit();
                return static_cast<char>(high << 4U | readHexDigit());
            }
            default:
                throw std::runtime_error(std::string("unknown escape \\") + c);
        }
    }

    unsigned readHexDigit() {
        const char c = take();
        if (c >= '0' && c <= '9') {
            return static_cast<unsigned>(c - '0');
        }
        if (c >= 'a' && c <= 'f') {
            return static_cast<unsigned>(c - 'a' + 10);
        }
        if (c >= 'A' && c <= 'F') {
            return static_cast<unsigned>(c - 'A' + 10);
        }
        throw std::runtime_error("\\x needs two hexadecimal digits");
    }

    std::string_view rest_;
    std::vector<Word> words_;
};

}  // namespace

std::string quoteWord(std::string_view word) {
    if (standsBare(word)) {
        return std::string(word);
    }
    std::string out;
    out.reserve(word.size() + 2);
    out += '\'';
    for (std::size_t i = 0; i < word.size();) {
        const std::size_t size =
            static_cast<unsigned char>(word[i]) >= 0x80 ? printableUtf8(word.substr(i)) : 0;
        if (size == 0) {
            appendEscaped(out, word[i++]);
        } else {
            out += word.substr(i, size);
            i += size;
        }
    }
    out += '\'';
    return out;
}

std::vector<Word> splitWords(std::string_view line) { return Splitter(line).run(); }

std::vector<std::string_view> splitText(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

}  // namespace sandbox
