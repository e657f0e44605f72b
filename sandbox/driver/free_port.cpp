#include "free_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <stdexcept>

int freePort() {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    const bool isFound =
        bind(listener, generic, size) == 0 && getsockname(listener, generic, &size) == 0;
    close(listener);
    if (!isFound) throw std::runtime_error("no free port for a server");
    return ntohs(address.sin_port);
}
