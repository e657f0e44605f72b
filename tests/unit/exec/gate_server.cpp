#include "gate_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace {

constexpr const char* kPasswordFile = "/etc/qrd/.qrd.shadow";

void need(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(std::string(what) + ": " + strerror(errno));
    }
}

int listenAsGate() {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(8880);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    need(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0, "bind");
    need(listen(listener, 1) == 0, "listen");
    return listener;
}

// The value of a header; empty when there is none.
std::string headerValue(const std::string& head, const std::string& name) {
    const std::size_t start = head.find("\r\n" + name + ": ");
    if (start == std::string::npos) {
        return "";
    }
    const std::size_t value = start + name.size() + 4;
    return head.substr(value, head.find("\r\n", value) - value);
}

// Reads one request. Returns false when the client has gone.
bool readRequest(int connection, Request& request) {
    std::string text;
    std::size_t end = std::string::npos;
    std::size_t length = 0;
    while (end == std::string::npos || text.size() < end + length) {
        char block[4096];
        const ssize_t got = read(connection, block, sizeof(block));
        if (got <= 0) {
            return false;
        }
        text.append(block, static_cast<std::size_t>(got));
        if (end == std::string::npos && text.find("\r\n\r\n") != std::string::npos) {
            end = text.find("\r\n\r\n") + 4;
            length =
                strtoul(headerValue(text.substr(0, end), "Content-Length").c_str(), nullptr, 10);
        }
    }
    request = {text.substr(0, text.find(' ')), headerValue(text, "HTTP_AUTH_PASSWD"),
               text.substr(end)};
    return true;
}

void raiseLoopback() {
    const int any = socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    need(ioctl(any, SIOCSIFFLAGS, &request) == 0, "raising the loopback");
    close(any);
}

}  // namespace

Answer answer(int status, const std::string& body) {
    return {"HTTP/1.1 " + std::to_string(status) + " Reason\r\nContent-Type: text/xml\r\n", body};
}

GateServer::GateServer(std::vector<Answer> answers)
    : answers_(std::move(answers)), listener_(listenAsGate()), thread_([this] { serve(); }) {}

GateServer::~GateServer() { thread_.join(); }

std::vector<Request> GateServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void GateServer::serve() {
    int connection = -1;
    for (const Answer& reply : answers_) {
        while (connection < 0 || !serveOne(connection, reply)) {
            close(connection);
            connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        }
    }
    close(listener_);
    close(connection);
}

// Returns false when the client left before it had asked.
bool GateServer::serveOne(int connection, const Answer& reply) {
    Request request;
    if (!readRequest(connection, request)) {
        return false;
    }
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
    }
    if (reply.head.empty()) {
        return true;
    }
    const std::string text =
        reply.head + "Content-Length: " + std::to_string(reply.body.size()) + "\r\n\r\n" +
        reply.body.substr(0, reply.isCutShort ? reply.body.size() / 2 : std::string::npos);
    return write(connection, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

void writePassword(const std::string& password, long changed) {
    std::ofstream(kPasswordFile) << password << "\n";
    const timespec times[2] = {{changed, 0}, {changed, 0}};
    utimensat(AT_FDCWD, kPasswordFile, times, 0);
}

bool passesInNamespace(const std::function<void()>& checks) {
    fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        alarm(60);  // A gate that is waited for in vain must not hold the tests up.
        try {
            need(unshare(CLONE_NEWNET | CLONE_NEWNS) == 0, "unshare");
            need(mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0, "mount /");
            need(mount("none", "/etc", "tmpfs", 0, nullptr) == 0, "mount /etc");
            need(mkdir("/etc/qrd", 0755) == 0, "mkdir");
            raiseLoopback();
            checks();
        } catch (const std::exception& failure) {
            ADD_FAILURE() << failure.what();
        }
        fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
