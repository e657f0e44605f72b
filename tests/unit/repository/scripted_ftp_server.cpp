#include "scripted_ftp_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

using zelvo::Descriptor;

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    return address;
}

Descriptor listenOnAnyPort(int& port) {
    Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener.get(), generic, size) != 0 || listen(listener.get(), 8) != 0 ||
        getsockname(listener.get(), generic, &size) != 0) {
        throw std::runtime_error("no port for a server");
    }
    port = ntohs(address.sin_port);
    return listener;
}

Descriptor acceptSoon(int listener) {
    pollfd ready{listener, POLLIN, 0};
    return Descriptor(poll(&ready, 1, 5000) == 1 ? accept4(listener, nullptr, nullptr, SOCK_CLOEXEC)
                                                 : -1);
}

// target: the last two numbers of the address in a PORT command are the port.
Descriptor connectTo(const std::string& target) {
    int high = 0;
    int low = 0;
    std::sscanf(target.c_str(), "%*d,%*d,%*d,%*d,%d,%d", &high, &low);
    Descriptor data(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address = loopback(high * 256 + low);
    connect(data.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return data;
}

void sendAll(int to, const std::string& text) {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t now = send(to, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
        if (now <= 0) return;
        sent += static_cast<std::size_t>(now);
    }
}

std::string readLine(int from) {
    std::string line;
    for (char c = 0; c != '\n' && read(from, &c, 1) == 1;) line += c;
    return line.substr(0, line.find('\r'));
}

const std::map<std::string, std::string> kGoodReplies = {
    {"USER", "331 Password"}, {"PASS", "230 In"},      {"PWD", "257 \"/\""}, {"CWD", "250 Gone"},
    {"TYPE", "200 Type"},     {"PORT", "200 Port"},    {"MKD", "257 Made"},  {"RMD", "250 Removed"},
    {"DELE", "250 Deleted"},  {"RNFR", "350 And to?"}, {"QUIT", "221 Bye"}};

}  // namespace

ScriptedFtpServer::ScriptedFtpServer(FtpScript script)
    : script_(std::move(script)), listener_(listenOnAnyPort(port_)), thread_([this] { serve(); }) {}

ScriptedFtpServer::~ScriptedFtpServer() {
    shutdown(listener_.get(), SHUT_RDWR);
    thread_.join();
}

std::string ScriptedFtpServer::url(const std::string& path) const {
    return "ftp://127.0.0.1:" + std::to_string(port_) + path;
}

std::string ScriptedFtpServer::commands() {
    const std::lock_guard lock(mutex_);
    return commands_;
}

void ScriptedFtpServer::serve() {
    while (true) {
        const Descriptor control(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!control.isOpen()) return;
        converse(control.get());
    }
}

void ScriptedFtpServer::converse(int control) {
    if (!reply(control, "greeting", "220 Here")) return;
    for (std::string line = readLine(control); !line.empty(); line = readLine(control)) {
        {
            const std::lock_guard lock(mutex_);
            commands_ += line + "\n";
        }
        if (!answer(control, line)) return;
    }
}

bool ScriptedFtpServer::answer(int control, const std::string& line) {
    const std::string command = line.substr(0, line.find(' '));
    if (const std::string key = "second " + line;
        ++count_[line] == 2 && script_.replies.contains(key)) {
        reply(control, key, "");
        return false;
    }
    if (script_.replies.contains(line)) return reply(control, line, "");
    if (command == "PASV") {
        int port = 0;
        passive_ = listenOnAnyPort(port);
        return reply(control, command,
                     "227 (" + script_.address + "," + std::to_string(port / 256) + "," +
                         std::to_string(port % 256) + ")");
    }
    if (command == "PORT") {
        passive_.reset();
        active_ = line.substr(5);
    }
    if (command == "SIZE") {
        return reply(control, command, "213 " + std::to_string(script_.content.size()));
    }
    if (command == "LIST" || command == "NLST" || command == "RETR" || command == "STOR") {
        return reply(control, command, "150 Now") &&
               (script_.replies.contains(command) || transfer(control, command));
    }
    const auto good = kGoodReplies.find(command);
    return reply(control, command, good != kGoodReplies.end() ? good->second : "500 What?");
}

bool ScriptedFtpServer::reply(int control, const std::string& key, const std::string& good) {
    const auto scripted = script_.replies.find(key);
    const std::string text = scripted != script_.replies.end() ? scripted->second : good;
    if (text != "-" && !text.empty()) sendAll(control, text + "\r\n");
    return !text.empty();
}

bool ScriptedFtpServer::transfer(int control, const std::string& command) {
    if (script_.replies.contains("data")) return true;
    {
        const Descriptor data = passive_.isOpen() ? acceptSoon(passive_.get()) : connectTo(active_);
        if (command != "STOR") {
            sendAll(data.get(), script_.content);
            // Until the other side has enough of it.
            if (script_.replies.contains("stall")) return !readLine(control).empty();
        }
        char block[4096];
        while (command == "STOR" && read(data.get(), block, sizeof block) > 0) {
        }
    }
    return reply(control, "transfer", "226 Done");
}
