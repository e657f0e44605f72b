// Whatever the URL: the result fits its buffer, a scheme, a login and a path around a host do not
// change what becomes of it, and stay.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "lib/idn.h"
#include "lib/idn_url.h"

namespace {

std::string urlToAscii(const std::string& url) {
    const char* const converted = idn_url_toascii(url.c_str());
    if (converted != nullptr && strlen(converted) >= 4096) abort();
    return converted != nullptr ? converted : "null";
}

void checkHost(const std::string& host) {
    const std::unique_ptr<char, decltype(&free)> ascii(idn_toascii(host.c_str()), &free);
    const std::string name = ascii != nullptr ? ascii.get() : "null";
    const std::string url = "https://u@" + name + ":80/d";
    if (name.size() < 4000 &&
        (urlToAscii(host) != name ||
         urlToAscii("https://u@" + host + ":80/d") != (ascii != nullptr ? url : "null"))) {
        abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string url = std::string(reinterpret_cast<const char*>(data), size).c_str();
    urlToAscii(url);
    if (!url.empty() && url.find_first_of("/:@") == std::string::npos) checkHost(url);
    return 0;
}
