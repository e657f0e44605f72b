#include "exec/url_encoding.h"

#include <curl/curl.h>

#include <memory>
#include <new>

namespace zelvo {

namespace {

// Takes over a text that libcurl made.
std::string takeCurlText(char* text) {
    const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
    if (owner == nullptr) {
        throw std::bad_alloc();
    }
    return owner.get();
}

}  // namespace

std::string urlencode(const std::string& text) {
    return takeCurlText(curl_escape(text.data(), static_cast<int>(text.size())));
}

std::string urldecode(const std::string& text) {
    return takeCurlText(curl_unescape(text.data(), static_cast<int>(text.size())));
}

}  // namespace zelvo
