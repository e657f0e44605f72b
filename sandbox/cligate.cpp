// The stand-in for the panel's CLI gate: runs utilities for whoever knows the administrator's
// password, over HTTP on the loopback address.

#include <httplib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <stdexcept>

#include "files.h"
#include "gate_request.h"
#include "paths.h"
#include "rules.h"
#include "xml_text.h"

namespace sandbox {

namespace {

constexpr int kPort = 8880;
constexpr char kPath[] = "/cligate.php";

struct Reply {
    int status = 200;
    std::string body;
};

Reply failure(int status, const std::string& why) {
    return {status, "<cli><failure>" + xmlText(why) + "</failure></cli>\n"};
}

Reply success(const GateResult& result) {
    return {200, "<cli><ok/><return>" + std::to_string(result.status) + "</return><stdout>" +
                     xmlText(result.out) + "</stdout><stderr>" + xmlText(result.err) +
                     "</stderr></cli>\n"};
}

// Read anew each time: the password may change while a restore runs.
std::string adminPassword() {
    std::string text = readFile(kPasswordFile).value_or("");
    return text.substr(0, text.find('\n'));
}

bool isAllowed(const httplib::Request& request) {
    return request.has_header("HTTP_AUTH_PASSWD") &&
           request.get_header_value("HTTP_AUTH_PASSWD") == adminPassword();
}

Reply serve(const httplib::Request& http, const GateRequest& request) {
    if (request.arguments.empty()) {
        return failure(400, "The request names no utility");
    }
    if (!isAllowed(http)) {
        return failure(403, "The password is wrong or missing");
    }
    try {
        return success(runGateRequest(request));
    } catch (const std::runtime_error& e) {
        return failure(400, e.what());
    }
}

// Ends the connection of a request without an answer. The library hands no socket out, so it is
// looked for by the address at its other end.
void drop(int remotePort) {
    for (int fd = 3; fd < 1024; ++fd) {
        sockaddr_in peer{};
        socklen_t size = sizeof peer;
        if (getpeername(fd, reinterpret_cast<sockaddr*>(&peer), &size) == 0 &&
            ntohs(peer.sin_port) == remotePort) {
            shutdown(fd, SHUT_RDWR);
        }
    }
}

// Gives true when the rule itself made the reply.
bool misbehave(const Rule& rule, const httplib::Request& http, Reply& reply) {
    bool replied = false;
    for (const Action& action : rule.actions) {
        if (action.name == "after") {
            continue;
        }
        if (action.name == "status") {
            reply.status = static_cast<int>(action.number());
            replied = true;
        } else if (action.name == "body") {
            reply.body = action.value;
            replied = true;
        } else if (action.name == "drop") {
            drop(http.remote_port);
            replied = true;
        } else if (action.name == "exit") {
            _exit(0);
        } else if (action.name == "sleep") {
            usleep(static_cast<useconds_t>(action.number() * 1000));
        } else {
            throw std::runtime_error("unknown fault action '" + action.name + "'");
        }
    }
    return replied;
}

Reply serveOrMisbehave(long number, const httplib::Request& http, const GateRequest& request) {
    const auto rules = parseRules(readFile(stateFile(kGateFaultsFile)).value_or(""), "request");
    const Rule* rule = findRule(rules, number, request.arguments);
    Reply reply;
    if (rule != nullptr && !rule->has("after") && misbehave(*rule, http, reply)) {
        return reply;
    }
    reply = serve(http, request);
    if (rule != nullptr && rule->has("after")) {
        misbehave(*rule, http, reply);
    }
    return reply;
}

void answer(const httplib::Request& http, const std::string& form, httplib::Response& response) {
    static std::atomic<long> count = 0;
    const long number = ++count;
    GateRequest request;
    Reply reply;
    try {
        request = parseGateRequest(form);
        reply = serveOrMisbehave(number, http, request);
    } catch (const std::exception& e) {
        reply = failure(400, e.what());
    }
    response.status = reply.status;
    response.set_content(reply.body, "text/xml");
    appendToFile(stateFile(kGateLogFile),
                 std::to_string(number) + " " + std::to_string(reply.status) +
                     (request.arguments.empty() ? "" : " " + request.arguments[0]) + "\n");
}

// The library's own reader of forms stops at 8 KiB, so that the body is taken piece by piece and
// read here.
std::string readBody(const httplib::ContentReader& content) {
    std::string body;
    content([&](const char* data, std::size_t size) {
        body.append(data, size);
        return true;
    });
    return body;
}

void sayReady(int fd) {
    writeAll(fd, "r");
    close(fd);
}

int run(int readyFd) {
    httplib::Server server;
    server.set_tcp_nodelay(true);
    server.set_keep_alive_max_count(1'000'000'000);
    server.set_keep_alive_timeout(3600);
    server.set_read_timeout(3600);
    server.Get(kPath, [](const httplib::Request& http, httplib::Response& response) {
        answer(http, "", response);
    });
    server.Post(kPath, [](const httplib::Request& http, httplib::Response& response,
                          const httplib::ContentReader& content) {
        answer(http, readBody(content), response);
    });
    if (!server.bind_to_port("127.0.0.1", kPort)) {
        failWithErrno("cannot listen on port 8880");
    }
    if (readyFd >= 0) {
        sayReady(readyFd);
    }
    return server.listen_after_bind() ? 0 : 1;
}

}  // namespace

}  // namespace sandbox

// cligate [READY-FD]: a byte is written to the descriptor once it listens.
int main(int argc, char** argv) {
    try {
        return sandbox::run(argc > 1 ? std::atoi(argv[1]) : -1);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "cligate: %s\n", e.what());
        return 1;
    }
}
