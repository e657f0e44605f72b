// The transport of a repository on an FTP server.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "repository/ftp_connection.h"
#include "repository/ftp_receiving.h"
#include "repository/ftp_streams.h"
#include "repository/transport.h"

namespace zelvo {

// url: begins with "ftp://"; without login.
std::unique_ptr<tRepositoryTransport> makeFtpTransport(const std::string& url);

// Files are transferred whole, by way of local ones. Failures carry the class that libcurl's result
// has; a failure of Delete speaks of a directory, too.
class tRepositoryFtp : public tRepositoryTransport {
  public:
    explicit tRepositoryFtp(const std::string& rootUrl);

    void Init(const std::string& login, const std::string& password, bool passive,
              unsigned long timeout) override;
    // The streams must not outlive the transport.
    std::unique_ptr<irepostream> GetFile(const std::string& path) override;
    using tRepositoryTransport::PutFile;
    std::unique_ptr<orepostream> PutFile(const std::string& path) override;
    // It and DeleteDir raise TransportError for the root of the repository.
    void Delete(const std::string& path) override;
    void CreateDir(const std::string& path) override;
    // Removes a link, and not what it leads to, and a file.
    void DeleteDir(const std::string& path) override;
    void DeleteEmptyDir(const std::string& path) override;
    void ListDir(const std::string& path, std::vector<std::string>& names) override;
    // The sizes are what the server's listing says.
    void ListDirEx(const std::string& path, std::vector<FileInfo>& entries) override;
    bool IsExist(const std::string& path) override;
    bool IsDirExist(const std::string& path) override;
    bool IsLink(const std::string&) override { return false; }
    // Ends in "/".
    std::string GetReceivingDir() override { return receiving_.path(); }
    // Refuses what is neither a file nor a directory, such as a link that an archive left.
    void ReceiveDir(const std::string& path) override;
    void ClearReceivingDir() noexcept override { receiving_.clear(); }
    // The servers tell none that could be relied on: it is 0.
    CreationDateMixin GetCreationDate(const std::string& path) override;
    // A file that was got already is not got again: that fails.
    std::string GetLocalFile(const std::string& path) override;
    // What an earlier call fetched and this one asks for again is not fetched again; what it does
    // not ask for is gone.
    std::string GetLocalDirFiles(const std::string& path,
                                 const std::vector<std::string>& names) override;
    // Raises TransportError: it is not known.
    std::uint64_t GetFileSize(const std::string& path) override;
    bool SendFile(const std::string& localFile, const std::string& path) override;
    bool FetchFile(const std::string& path, const std::string& localFile) override;

  private:
    FtpFile file(const std::string& path) const;
    // The connection, turned to a path.
    tFtpConnection& at(const std::string& path);
    bool holds(const std::string& path);
    bool isDirectory(const std::string& path);
    void deleteTree(const std::string& path, int depth);
    void addHidden(const std::string& path, std::vector<std::string>& names);
    void deleteEntry(const std::string& path, int depth);
    void sendDir(const std::string& path);

    std::string login_;
    std::string password_;
    FtpReceiving receiving_;
    // Dies before the local files.
    std::unique_ptr<tFtpConnection> connection_;
};

}  // namespace zelvo
