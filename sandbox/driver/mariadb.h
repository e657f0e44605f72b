// A real MariaDB server for a test, on a directory of the test's own.
//
//   const TempDir dir;
//   MariaDbServer server(dir.path("db"));
//   server.query("create database qrd");
#pragma once

#include <memory>
#include <string>
#include <vector>

class Process;

// The server listens on the socket that the client library takes for "localhost" and on a port of
// 127.0.0.1. That socket belongs to the machine, so the constructor moves the calling thread, and
// what it starts from then on, into a mount namespace of its own with an empty /run; root alone can
// do that. One server at a time in a program.
class MariaDbServer {
  public:
    // directory: is made, with the parents it needs; a tmpfs makes the start quick. What an earlier
    // server left in it is served again. Removing it is the caller's.
    // options: more options of mariadbd, such as "--version=5.0.96" for a server that says so.
    // Returns when the server answers. Raises std::runtime_error, with what the server said, if it
    // does not.
    explicit MariaDbServer(const std::string& directory,
                           const std::vector<std::string>& options = {});

    // Stops the server and waits for its end. After a failed test its log is printed.
    ~MariaDbServer();

    MariaDbServer(const MariaDbServer&) = delete;
    MariaDbServer& operator=(const MariaDbServer&) = delete;

    // Runs statements as the server's root, who has no password, and returns the rows as the client
    // prints them: a tab between columns, a line feed behind each row, "NULL", tabs and line feeds
    // and backslashes in values written with a backslash. Raises std::runtime_error with the
    // client's message if one fails.
    std::string query(const std::string& sql);

    // The port on 127.0.0.1.
    int port() const { return port_; }

    // The path of the socket.
    std::string socket() const;

    // What the server has logged so far.
    std::string log() const;

  private:
    void initialise();
    void start(const std::vector<std::string>& options);
    void awaitAnswer() const;
    bool hasEnded() const;

    std::string directory_;
    int port_ = 0;
    std::unique_ptr<Process> server_;
};
