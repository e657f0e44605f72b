#include "lib/libcommon.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using RealPath = std::unique_ptr<char, decltype(&free)>;

RealPath realPath(const char* path) { return {realpath(path, nullptr), &free}; }

}  // namespace

bool issubdir(const char* parent, const char* child) {
    const RealPath parentPath = realPath(parent);
    const RealPath childPath = realPath(child);
    if (!parentPath || !childPath) {
        return false;
    }
    const std::size_t length = strlen(parentPath.get());
    if (strncmp(parentPath.get(), childPath.get(), length) != 0) {
        return false;
    }
    // "/a" is no parent of "/ab"; "/" is one of all, and the only real path that ends in a slash.
    const char next = childPath.get()[length];
    return next == '\0' || next == '/' || parentPath.get()[length - 1] == '/';
}

bool isempty(const char* text) { return text == nullptr || *text == '\0'; }

bool is_number(const char* text) {
    return !isempty(text) && strspn(text, "0123456789") == strlen(text);
}
