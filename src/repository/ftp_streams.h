// The files of a repository on an FTP server as streams, each on a local file.
#pragma once

#include <string>

#include "repository/ftp_connection.h"
#include "repository/transport.h"

namespace zelvo {

// A file on a server, and how to get there.
struct FtpFile {
    tFtpConnection* connection = nullptr;
    std::string url;
    std::string login;
    std::string password;
    // For messages.
    std::string path;

    // The connection, turned to the file.
    tFtpConnection& reach() const;
};

// Downloads in open.
class tFtpInStream : public irepostream {
  public:
    // localFile: is the stream's own from now on.
    tFtpInStream(FtpFile file, std::string localFile);
    ~tFtpInStream() override;

    void close() override { std::ifstream::close(); }
    void open() override;
    bool is_open() const override { return std::ifstream::is_open(); }

  private:
    FtpFile file_;
    std::string localFile_;
};

// Uploads in close.
class tFtpOutStream : public orepostream {
  public:
    // As of tFtpInStream.
    tFtpOutStream(FtpFile file, std::string localFile);
    ~tFtpOutStream() override;

    void close() override;
    void open() override;
    bool is_open() const override { return std::ofstream::is_open(); }

  private:
    void closeLocalFile();

    FtpFile file_;
    std::string localFile_;
};

}  // namespace zelvo
