// The output callbacks with which libxml2 writes into a C++ stream.
#pragma once

namespace zelvo {

// For xmlOutputBufferCreateIO; context is a std::ostream that outlives the buffer.
struct StreamXmlIoHandler {
    // Writes the bytes. Gives their count, or -1 if the stream's fail or bad state is set.
    static int writeCallback(void* context, const char* buffer, int length);
    // Gives 0 and leaves the stream open.
    static int closeCallback(void* context);
};

}  // namespace zelvo
