// Allocation that succeeds or ends the process with code 1 and a message.
#pragma once

#include <cstdarg>
#include <cstddef>

// As malloc(3); null only for a size of 0.
void* malloc_safe(std::size_t size);

// As realloc(3); null only for a size of 0.
void* realloc_safe(void* block, std::size_t size);

// As vasprintf(3): stores the formatted text, which the caller frees, in *text and returns its
// length.
int vasprintf_safe(char** text, const char* format, va_list arguments)
    __attribute__((format(printf, 2, 0)));

// As asprintf(3).
int asprintf_safe(char** text, const char* format, ...) __attribute__((format(printf, 2, 3)));
