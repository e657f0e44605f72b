#include "restorectl/report.h"

#include <algorithm>
#include <array>
#include <boost/algorithm/string.hpp>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

namespace zelvo {

namespace {

using Json = nlohmann::ordered_json;

std::string humanSize(std::uint64_t bytes) {
    const std::array<const char*, 5> units = {"B", "KiB", "MiB", "GiB", "TiB"};
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    for (; value >= 1024 && unit + 1 < units.size(); ++unit) {
        value /= 1024;
    }
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", value, units[unit]);
    return text.data();
}

// The lines of a cell.
std::vector<std::string> linesOf(const Cell& cell) {
    struct {
        std::vector<std::string> operator()(const std::string& text) const {
            return {text.empty() ? "-" : printable(text, " ")};
        }
        std::vector<std::string> operator()(std::uint64_t number) const {
            return {std::to_string(number)};
        }
        std::vector<std::string> operator()(ByteCount size) const {
            return {humanSize(size.bytes)};
        }
        std::vector<std::string> operator()(const std::vector<std::string>& texts) const {
            std::vector<std::string> lines(texts.size());
            std::transform(texts.begin(), texts.end(), lines.begin(),
                           [](const std::string& text) { return printable(text, " "); });
            return lines.empty() ? std::vector<std::string>{"-"} : lines;
        }
    } visitor;
    return std::visit(visitor, cell);
}

std::string textOf(const Cell& cell) { return boost::join(linesOf(cell), ", "); }

Json jsonOf(const Cell& cell) {
    struct {
        Json operator()(const std::string& text) const { return text; }
        Json operator()(std::uint64_t number) const { return number; }
        Json operator()(ByteCount size) const { return size.bytes; }
        Json operator()(const std::vector<std::string>& texts) const { return texts; }
    } visitor;
    return std::visit(visitor, cell);
}

// In characters (UTF-8), which is in columns but for wide and combining ones.
std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void printLine(std::ostream& out, const std::vector<std::string>& texts,
               const std::vector<std::size_t>& widths) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        out << texts[i];
        // Nothing hangs over the end of a line.
        if (i + 1 < texts.size()) {
            out << std::string(widths[i] - widthOf(texts[i]) + 2, ' ');
        }
    }
    out << '\n';
}

// The length of the UTF-8 sequence (RFC 3629) at a place, of one character that no terminal obeys;
// 0 for what is none.
std::size_t harmlessSequence(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    const unsigned first = byte(0);
    if (first < 0x80) {
        return first < 0x20 || first == 0x7F ? 0 : 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    unsigned code = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
        code = code << 6U | (byte(i) & 0x3FU);
    }
    constexpr std::array<unsigned, 5> kLeast = {0, 0, 0xA0, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    // These turn the order of what follows.
    const bool isDirection =
        (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return first < 0xC2 || code < kLeast[length] || code > 0x10FFFF || isSurrogate || isDirection
               ? 0
               : length;
}

std::string escaped(char byte) {
    std::array<char, 5> text = {};
    std::snprintf(text.data(), text.size(), "\\x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    return text.data();
}

}  // namespace

std::string printable(const std::string& text, const std::string& lineBreak) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = harmlessSequence(text, i);
        if (length > 0) {
            result.append(text, i, length);
        } else if (text[i] == '\n') {
            result += lineBreak;
        } else {
            result += escaped(text[i]);
        }
        i += std::max<std::size_t>(length, 1);
    }
    return result;
}

void Report::fail(const std::string& text) {
    // Reasons that a program did not give leave their heads.
    failures_.push_back(boost::trim_right_copy_if(text, boost::is_any_of(": \n")));
}

void Report::printTable(std::ostream& out) const {
    if (isOne_) {
        printOne(out);
    } else {
        printRows(out);
    }
}

void Report::printRows(std::ostream& out) const {
    std::vector<std::vector<std::string>> lines(1);
    std::vector<std::size_t> widths;
    for (const Column& column : columns_) {
        lines.front().emplace_back(column.heading);
        widths.push_back(lines.front().back().size());
    }
    for (const std::vector<Cell>& row : rows_) {
        std::vector<std::string>& line = lines.emplace_back();
        for (std::size_t i = 0; i < row.size(); ++i) {
            line.push_back(textOf(row[i]));
            widths[i] = std::max(widths[i], widthOf(line.back()));
        }
    }
    for (const std::vector<std::string>& line : lines) {
        printLine(out, line, widths);
    }
}

void Report::printOne(std::ostream& out) const {
    std::size_t width = 0;
    for (const Column& column : columns_) {
        width = std::max(width, std::char_traits<char>::length(column.heading));
    }
    for (const std::vector<Cell>& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::string heading = columns_[i].heading;
            for (const std::string& line : linesOf(row[i])) {
                printLine(out, {heading, line}, {width});
                heading.clear();
            }
        }
    }
}

void Report::printJson(std::ostream& out) const {
    Json rows = Json::array();
    for (const std::vector<Cell>& row : rows_) {
        Json object = Json::object();
        for (std::size_t i = 0; i < row.size(); ++i) {
            object[columns_[i].key] = jsonOf(row[i]);
        }
        rows.push_back(object);
    }
    Json document = Json::object();
    if (!isOne_) {
        document[key_] = rows;
    } else if (!rows.empty()) {
        document[key_] = rows.front();
    }
    document["failures"] = failures_;
    out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace zelvo
