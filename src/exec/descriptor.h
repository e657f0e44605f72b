// Owners of file descriptors.
#pragma once

#include <utility>

namespace zelvo {

// Closes its descriptor at the end, whichever way that comes.
class Descriptor {
  public:
    // fd: an open descriptor, or -1 for none.
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        reset(std::exchange(other.fd_, -1));
        return *this;
    }
    ~Descriptor() { reset(); }

    // The descriptor, or -1.
    int get() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }

    // Closes what is owned and takes over another descriptor, or none. Leaves errno alone.
    void reset(int fd = -1) noexcept;

  private:
    int fd_;
};

// Makes target the stream of source and closes source; does nothing when they are equal. Returns
// what dup2 (POSIX) returned. Async-signal-safe.
int moveDescriptor(int source, int target) noexcept;

// Both ends of a pipe, closed by every exec and never among the standard streams: a process that
// was started without them would otherwise get a pipe's end there, where the child's streams go.
struct PipeEnds {
    Descriptor readEnd;
    Descriptor writeEnd;

    // Makes the pipe (Linux pipe2). Returns false with errno set when that fails.
    [[nodiscard]] bool open();
};

}  // namespace zelvo
