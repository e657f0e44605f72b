#include "xml/stream_io.h"

#include <ostream>

namespace zelvo {

int StreamXmlIoHandler::writeCallback(void* context, const char* buffer, int length) {
    auto& stream = *static_cast<std::ostream*>(context);
    stream.write(buffer, length);
    return stream.fail() || stream.bad() ? -1 : length;
}

int StreamXmlIoHandler::closeCallback(void* /*context*/) { return 0; }

}  // namespace zelvo
