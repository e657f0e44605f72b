#include "restore/key_value_lines.h"

#include <sstream>

namespace zelvo {

std::map<std::string, std::string> parseKeyValueLines(const std::string& text) {
    std::map<std::string, std::string> values;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        // The last line may end without a line feed, and its carriage return is then its own.
        if (!line.empty() && line.back() == '\r' && !lines.eof()) {
            line.pop_back();
        }
        const size_t separator = line.find('=');
        if (separator != std::string::npos) {
            values[line.substr(0, separator)] = line.substr(separator + 1);
        }
    }
    return values;
}

}  // namespace zelvo
