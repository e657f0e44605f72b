// A real PostgreSQL server for a test, on a directory of the test's own.
//
//   const TempDir dir;
//   PostgreSqlServer server(dir.path("pg"));
//   server.query("create database shop");
#pragma once

#include <memory>
#include <string>

class Process;

// The server listens on a socket in the directory, where everybody is let in as whom they say they
// are, and on a port of 127.0.0.1, where it asks for a password. It runs as the user "postgres",
// since it refuses to be root.
class PostgreSqlServer {
  public:
    // directory: is made; its parents must be open to the server's user. Removing it is the
    // caller's. Returns when the server answers. Raises std::runtime_error, with what the server
    // said, if it does not.
    explicit PostgreSqlServer(const std::string& directory);

    // Stops the server and waits for its end. After a failed test its log is printed.
    ~PostgreSqlServer();

    PostgreSqlServer(const PostgreSqlServer&) = delete;
    PostgreSqlServer& operator=(const PostgreSqlServer&) = delete;

    // Runs statements as the server's superuser and returns the rows: a tab between columns, a line
    // feed behind each row. Raises std::runtime_error with the client's message if one fails.
    std::string query(const std::string& sql, const std::string& database = "postgres");

    // A database as pg_restore takes it (custom format).
    std::string dump(const std::string& database);

    // The port on 127.0.0.1.
    int port() const { return port_; }

    // The directory of the socket, which a client takes for a host.
    std::string socket() const { return directory_; }

  private:
    std::string log() const;
    void initialise() const;
    void awaitAnswer() const;

    std::string directory_;
    int port_;
    std::unique_ptr<Process> server_;
};
