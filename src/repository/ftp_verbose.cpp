#include "repository/ftp_verbose.h"

namespace zelvo {

namespace {

const std::string kMask = "***";

}  // namespace

std::string maskPassword(const std::string& line, const std::string& password) {
    if (line.starts_with("PASS ")) {
        return "PASS " + kMask;
    }
    std::string masked = line.substr(0, line.find_last_not_of("\r\n") + 1);
    for (std::size_t at = masked.find(password); !password.empty() && at != std::string::npos;
         at = masked.find(password, at + kMask.size())) {
        masked.replace(at, password.size(), kMask);
    }
    return masked;
}

}  // namespace zelvo
