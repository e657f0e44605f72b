#include "lib/iconv_recode.h"

#include <iconv.h>

#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace zelvo {

namespace {

class Conversion {
  public:
    Conversion(const std::string& from, const std::string& to)
        : descriptor_(iconv_open(to.c_str(), from.c_str())) {}
    ~Conversion() { close(); }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    bool isOpen() const { return descriptor_ != kNone; }
    bool close() { return !isOpen() || iconv_close(std::exchange(descriptor_, kNone)) == 0; }

    // Converts from *input on as far as it goes, moves *input and *left behind what was taken and
    // appends to output. A null input appends what ends the text in its encoding. Returns false,
    // with errno set, where the input is invalid.
    bool run(char** input, std::size_t* left, std::string& output);

  private:
    static inline const iconv_t kNone = reinterpret_cast<iconv_t>(-1);

    iconv_t descriptor_;
};

bool Conversion::run(char** input, std::size_t* left, std::string& output) {
    char buffer[1024];
    std::size_t result = 0;
    do {
        char* end = buffer;
        std::size_t room = sizeof(buffer);
        result = iconv(descriptor_, input, left, &end, &room);
        output.append(buffer, sizeof(buffer) - room);
    } while (result == static_cast<std::size_t>(-1) && errno == E2BIG);
    return result != static_cast<std::size_t>(-1);
}

// A runtime error that ends with the reason that errno gives.
[[noreturn]] void fail(const char* what, const std::string& from, const std::string& to) {
    throw std::system_error(errno, std::generic_category(), what + from + " to " + to);
}

}  // namespace

std::string iconvRecode(const std::string& from, const std::string& to, const std::string& text,
                        bool tolerant) {
    Conversion conversion(from, to);
    if (!conversion.isOpen()) {
        fail("Conversion from ", from, to);
    }
    std::string input = text;
    char* next = input.data();
    std::size_t left = input.size();
    std::string output;
    while (!conversion.run(&next, &left, output)) {
        if (!tolerant) {
            fail("Cannot convert from ", from, to);
        }
        if (left == 0) {
            break;
        }
        output += '?';
        ++next;
        --left;
    }
    conversion.run(nullptr, nullptr, output);
    if (!conversion.close()) {
        throw std::runtime_error("Closing conversion from " + from + " to utf-8 failed");
    }
    return output;
}

}  // namespace zelvo
