#include "commons/system_error.h"

#include <cerrno>
#include <cstring>

namespace zelvo {

SystemError::SystemError(const std::string& message, int number)
    : std::runtime_error(message), number_(number) {}

const char* SystemError::what() const noexcept {
    if (text_.empty()) {
        try {
            std::string text = std::runtime_error::what();
            if (!text.empty()) {
                text += ": ";
            }
            text_ = text + strerror(number_);
        } catch (const std::exception&) {
            return std::runtime_error::what();
        }
    }
    return text_.c_str();
}

void throwSystemError(const std::string& message, int number) {
    switch (number) {
        case EPERM:
            throw ExSystemError<EPERM>(message);
        case ENOENT:
            throw ExSystemError<ENOENT>(message);
        case EINTR:
            throw ExSystemError<EINTR>(message);
        case ECHILD:
            throw ExSystemError<ECHILD>(message);
        case EAGAIN:
            throw ExSystemError<EAGAIN>(message);
        case 0:
            throw SystemError(message, errno);
        default:
            throw SystemError(message, number);
    }
}

}  // namespace zelvo
