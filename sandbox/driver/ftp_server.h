// Real FTP servers for a test, each on a directory of the test's own.
//
//   const FtpServer server(FtpServer::Kind::kVsftpd, dir.path("ftp"));
//   put("ftp://127.0.0.1:" + std::to_string(server.port()) + "/repo", server.login(), ...);
#pragma once

#include <memory>
#include <string>

class Process;

// The server listens on a port of 127.0.0.1. What clients may write is the directory "repo" of it;
// its files are those below root() + "/repo". Needs root.
class FtpServer {
  public:
    enum class Kind {
        // A server in C that takes anonymous clients into a chroot. It lists as "ls -l" with ids as
        // numbers, and hides nothing.
        kVsftpd,
        // The same with what begins with a dot left out of listings.
        kHidingVsftpd,
        // A library in Python. It asks for a login, which holds what ends the login of a URL.
        kPyftpdlib
    };

    // directory: is made. Returns when the server answers; raises std::runtime_error if it does
    // not.
    FtpServer(Kind kind, const std::string& directory);
    // Kills the server.
    ~FtpServer();
    FtpServer(const FtpServer&) = delete;
    FtpServer& operator=(const FtpServer&) = delete;

    int port() const { return port_; }
    std::string root() const { return directory_ + "/root"; }
    std::string login() const { return login_; }
    std::string password() const { return password_; }

  private:
    void startVsftpd(bool isHiding);
    void startPyftpdlib();
    void awaitAnswer() const;

    std::string directory_;
    int port_ = 0;
    std::string login_;
    std::string password_;
    std::unique_ptr<Process> server_;
};
