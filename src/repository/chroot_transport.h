// A directory of a transport, shown as a transport.
#pragma once

#include <string>
#include <vector>

#include "repository/transport.h"

namespace zelvo {

// Forwards each operation with the root in front of the path. What leads out of the root is
// refused; a link in a local directory is followed.
class tRepositoryTransportChroot : public tRepositoryTransport {
  public:
    // parent: not owned. root: relative to it. Raises what relativePath raises.
    tRepositoryTransportChroot(tRepositoryTransport& parent, const std::string& root);

    // Does nothing: the parent has its credentials.
    void Init(const std::string&, const std::string&, bool, unsigned long) override {}
    std::unique_ptr<irepostream> GetFile(const std::string& path) override;
    std::unique_ptr<orepostream> PutFile(const std::string& path) override;
    void PutFile(std::istream& source, const std::string& path) override;
    void Copy(const std::string& path, tRepositoryTransport& target,
              const std::string& targetPath) override;
    void Delete(const std::string& path) override;
    void Move(const std::string& path, tRepositoryTransport& target,
              const std::string& targetPath) override;
    void CreateDir(const std::string& path) override;
    void DeleteDir(const std::string& path) override;
    void DeleteEmptyDir(const std::string& path) override;
    void ListDir(const std::string& path, std::vector<std::string>& names) override;
    void ListDirEx(const std::string& path, std::vector<FileInfo>& entries) override;
    bool IsExist(const std::string& path) override;
    bool IsDirExist(const std::string& path) override;
    bool IsLink(const std::string& path) override;
    // With the root behind it, so that what is made there is received where it belongs.
    std::string GetReceivingDir() override;
    void ReceiveDir(const std::string& path) override;
    void ClearReceivingDir() noexcept override { parent_.ClearReceivingDir(); }
    CreationDateMixin GetCreationDate(const std::string& path) override;
    std::string GetLocalFile(const std::string& path) override;
    std::string GetLocalDirFiles(const std::string& path,
                                 const std::vector<std::string>& names) override;
    std::uint64_t GetFileSize(const std::string& path) override;
    bool SendFile(const std::string& localFile, const std::string& path) override;
    bool FetchFile(const std::string& path, const std::string& localFile) override;

  private:
    // path with the root joined behind it.
    std::string GetRootedPath(const std::string& path) const;
    // The root with path joined behind it: what the parent knows it as.
    std::string GetRealPath(const std::string& path) const;

    tRepositoryTransport& parent_;
    std::string root_;
};

}  // namespace zelvo
