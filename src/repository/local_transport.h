// The transport of a repository in a local directory.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// Nothing is copied and nothing is received: the local files are the repository's own.
class tRepositoryLocal : public tRepositoryTransport {
  public:
    // path: of the directory, with or without a final slash.
    explicit tRepositoryLocal(const std::string& path);

    void Init(const std::string& login, const std::string& password, bool passive,
              unsigned long timeout) override;
    std::unique_ptr<irepostream> GetFile(const std::string& path) override;
    using tRepositoryTransport::PutFile;
    std::unique_ptr<orepostream> PutFile(const std::string& path) override;
    // One that is not there is no failure. It and DeleteDir raise TransportError for the root of
    // the repository.
    void Delete(const std::string& path) override;
    void CreateDir(const std::string& path) override;
    // Removes a link, and not what it leads to, and a file.
    void DeleteDir(const std::string& path) override;
    void DeleteEmptyDir(const std::string& path) override;
    void ListDir(const std::string& path, std::vector<std::string>& names) override;
    // Passes over what has no size, such as a directory.
    void ListDirEx(const std::string& path, std::vector<FileInfo>& entries) override;
    bool IsExist(const std::string& path) override;
    bool IsDirExist(const std::string& path) override;
    bool IsLink(const std::string& path) override;
    std::string GetReceivingDir() override { return ""; }
    void ReceiveDir(const std::string&) override {}
    void ClearReceivingDir() noexcept override {}
    // The time of the last write. Raises boost::filesystem::filesystem_error.
    CreationDateMixin GetCreationDate(const std::string& path) override;
    std::string GetLocalFile(const std::string& path) override;
    std::string GetLocalDirFiles(const std::string& path,
                                 const std::vector<std::string>& names) override;
    std::uint64_t GetFileSize(const std::string& path) override;
};

}  // namespace zelvo
