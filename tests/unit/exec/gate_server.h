// A small HTTP server in the place of the panel's CLI gate, and the private namespaces in which it
// can have the gate's address and the panel's password file.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// What the server does with one request.
struct Answer {
    // The status line and further header lines, each with its line end; empty for no answer at all:
    // the connection and the server are gone.
    std::string head;
    std::string body;
    // The server is gone behind the first half of the body.
    bool isCutShort = false;
};

// An answer with that status.
Answer answer(int status, const std::string& body);

// One request as it came.
struct Request {
    // "GET" or "POST".
    std::string method;
    // The value of the header with the password.
    std::string password;
    std::string body;
};

// Answers the requests on 127.0.0.1:8880 one after the other, then goes away.
class GateServer {
  public:
    explicit GateServer(std::vector<Answer> answers);
    // Waits until all answers are given.
    ~GateServer();

    // What came so far.
    std::vector<Request> requests();

  private:
    void serve();
    bool serveOne(int connection, const Answer& reply);

    std::vector<Answer> answers_;
    std::vector<Request> requests_;
    std::mutex mutex_;
    int listener_;
    std::thread thread_;
};

// Writes the password file of the panel, changed at a time in seconds.
void writePassword(const std::string& password, long changed);

// Runs checks in a process of its own with private network and mount namespaces: nothing listens on
// the loopback, and /etc is empty but for the directory of the panel. Returns whether no check
// failed there. Needs root.
bool passesInNamespace(const std::function<void()>& checks);
