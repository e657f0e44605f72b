#include "repository/ftp_listing.h"

#include <algorithm>
#include <boost/regex.hpp>
#include <cctype>
#include <charconv>
#include <stdexcept>

#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

bool isBlank(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }
bool isDigit(char character) { return std::isdigit(static_cast<unsigned char>(character)) != 0; }

// Matches a whole line. A line on which the expression gives up has not its form.
bool matches(const std::string& line, boost::smatch& match, const boost::regex& form) {
    try {
        return boost::regex_match(line, match, form);
    } catch (const std::runtime_error&) {
        return false;
    }
}

bool readSize(const std::string& digits, long& size) {
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, size);
    return error == std::errc() && stop == end;
}

// Whether a number ends before a blank and another one stands between blanks behind it, as in each
// line of "ls -l". The expression would find that out as well, but for half a second in a line that
// was made for it.
bool hasLinksAndSize(const std::string& line) {
    auto at = std::adjacent_find(line.begin(), line.end(),
                                 [](char one, char next) { return isDigit(one) && isBlank(next); });
    for (std::ptrdiff_t between = 2; at != line.end(); between = 0) {
        const auto number = std::adjacent_find(at + between, line.end(), [](char one, char next) {
            return isBlank(one) && isDigit(next);
        });
        if (number == line.end()) {
            return false;
        }
        at = std::find_if_not(number + 1, line.end(), isDigit);
        if (at != line.end() && isBlank(*at)) {
            return std::find_if(at + 1, line.end(), isBlank) != line.end();
        }
    }
    return false;
}

// The size of a line. Where owner and group are numbers, the expression takes the group for it and
// leaves the size in front of the date. A date may begin with a number too, that of the day.
std::string sizeOf(const boost::smatch& match) {
    static const std::string month("([^\\s\\d]\\S*|\\d\\d?[^\\s\\d:./-]\\S*)");
    static const boost::regex shifted("(\\d+)\\s+((" + month + "\\s+\\d\\d?[.,]?|\\d\\d?[.]?\\s+" +
                                      month + ")\\s+\\d|\\d+[-/.]\\d+[-/.]\\d).*");
    boost::smatch rest;
    const std::string date = match[2];
    return matches(date, rest, shifted) ? rest[1] : match[1];
}

// What "ls -l" tells of a link without the path that it leads to, which would be taken for the
// name.
std::string withoutTarget(const std::string& line) {
    return line.starts_with('l') ? line.substr(0, line.find(" -> ")) : line;
}

void tellUnknownLine(const std::string& line) {
    LogMsg("Unable to get file info from line '" + line.substr(0, kMaxListingLine) + "'");
}

// Calls work for each line that is not empty and not too long.
template <class Work>
void eachLine(const std::string& text, Work&& work) {
    std::size_t lines = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        if (++lines > kMaxListingLines) {
            throw EXC(TransportError) % "the directory has too many entries";
        }
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        if (line.size() > kMaxListingLine) {
            tellUnknownLine(line);
        } else if (!line.empty()) {
            work(line);
        }
        begin = end + 1;
    }
}

}  // namespace

bool InitFromUnixLs(const std::string& line, FtpFileInfo& info) {
    static const boost::regex form(".*?[\\d]+\\s+.*?\\s+(\\d+)\\s+(.*)\\s+(.*?)");
    boost::smatch match;
    if (!hasLinksAndSize(line) || !matches(line, match, form) ||
        !readSize(sizeOf(match), info.size)) {
        return false;
    }
    info.name = match[3];
    info.isDirectory = line.starts_with('d');
    return true;
}

bool InitFromWinDir(const std::string& line, FtpFileInfo& info) {
    static const boost::regex form(
        "(.+?)[[:space:]]{3,}.*?(([[:digit:]]|\\,|\\.)*)[[:space:]]+(.+?)");
    boost::smatch match;
    if (!matches(line, match, form)) {
        return false;
    }
    std::string size = match[2];
    std::erase_if(size, [](char character) { return !isDigit(character); });
    info.size = 0;
    if (size.empty()) {
        // A directory has none.
        LogMsg("Unable to retreave file size from line '" + line + "'");
    } else if (!readSize(size, info.size)) {
        return false;
    }
    info.name = match[4];
    info.isDirectory = size.empty() && line.find("<DIR>") != std::string::npos;
    return true;
}

namespace {

bool readEntry(const std::string& line, FtpFileInfo& info) {
    if (!InitFromUnixLs(withoutTarget(line), info) && !InitFromWinDir(line, info)) {
        return false;
    }
    info.name = fileNameOf(info.name);
    return true;
}

bool isNoEntry(const std::string& name) { return name.empty() || name == "." || name == ".."; }

}  // namespace

void SplitFileInfo(const std::string& text, std::vector<FtpFileInfo>& entries) {
    eachLine(text, [&entries](const std::string& line) {
        FtpFileInfo info;
        if (!readEntry(line, info)) {
            tellUnknownLine(line);
        } else if (!isNoEntry(info.name)) {
            entries.push_back(info);
        }
    });
}

bool isEmptyListing(const std::string& text) {
    bool isEmpty = true;
    eachLine(text, [&isEmpty](const std::string& line) {
        FtpFileInfo info;
        isEmpty &= line.starts_with("total ") || (readEntry(line, info) && isNoEntry(info.name));
    });
    return isEmpty;
}

void splitFileNames(const std::string& text, std::vector<std::string>& names) {
    eachLine(text, [&names](const std::string& line) {
        const std::string name = fileNameOf(line);
        if (isEntryName(name)) {
            names.push_back(name);
        }
    });
}

}  // namespace zelvo
