#include "lib/libsafe.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "lib/liblog.h"

namespace {

void* checked(void* block, std::size_t size) {
    if (block == nullptr && size != 0) {
        messlog2(1, 0, "alloc(%d)", static_cast<int>(size));
    }
    return block;
}

}  // namespace

void* malloc_safe(std::size_t size) { return checked(malloc(size), size); }

void* realloc_safe(void* block, std::size_t size) { return checked(realloc(block, size), size); }

int vasprintf_safe(char** text, const char* format, va_list arguments) {
    const int length = vasprintf(text, format, arguments);
    if (length < 0) {
        messlog2(1, 0, "Cannot allocate memory: %s", strerror(errno));
    }
    return length;
}

int asprintf_safe(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = vasprintf_safe(text, format, arguments);
    va_end(arguments);
    return length;
}
