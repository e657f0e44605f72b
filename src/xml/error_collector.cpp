#include "xml/error_collector.h"

#include <libxml/xmlerror.h>

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace zelvo {

void libxmlErrorHandler(void* context, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    // The analyzer loses sight of va_start when it reads several files in a run.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    const int length = vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length <= 0) {
        return;
    }
    const auto size = static_cast<size_t>(length);
    std::vector<char> piece(size + 1);
    va_start(arguments, format);
    // The limit is the length without the terminating zero: the last character goes.
    vsnprintf(piece.data(), size, format, arguments);
    va_end(arguments);
    static_cast<std::string*>(context)->append(piece.data());
}

ErrorCollector::ErrorCollector() { xmlSetGenericErrorFunc(&text_, libxmlErrorHandler); }

ErrorCollector::~ErrorCollector() { xmlSetGenericErrorFunc(nullptr, nullptr); }

}  // namespace zelvo
