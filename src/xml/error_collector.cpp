#include "xml/error_collector.h"

#include <libxml/xmlerror.h>

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace zelvo {

void libxmlErrorHandler(void* context, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list measured;
    va_copy(measured, arguments);
    const int length = vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length > 0) {
        const auto size = static_cast<size_t>(length);
        std::vector<char> piece(size + 1);
        // The limit is the length without the terminating zero: the last character goes.
        vsnprintf(piece.data(), size, format, arguments);
        static_cast<std::string*>(context)->append(piece.data());
    }
    va_end(arguments);
}

ErrorCollector::ErrorCollector() { xmlSetGenericErrorFunc(&text_, libxmlErrorHandler); }

ErrorCollector::~ErrorCollector() { xmlSetGenericErrorFunc(nullptr, nullptr); }

}  // namespace zelvo
