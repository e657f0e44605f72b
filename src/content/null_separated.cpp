#include "content/null_separated.h"

namespace zelvo {

std::vector<std::string> parse_nullseparated(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find('\0', start)) != std::string::npos;) {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

}  // namespace zelvo
