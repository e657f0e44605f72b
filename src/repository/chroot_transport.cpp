#include "repository/chroot_transport.h"

#include "repository/path_guard.h"

namespace zelvo {

std::unique_ptr<tRepositoryTransport> tRepositoryTransport::Chroot(tRepositoryTransport& parent,
                                                                   const std::string& root) {
    return std::make_unique<tRepositoryTransportChroot>(parent, root);
}

tRepositoryTransportChroot::tRepositoryTransportChroot(tRepositoryTransport& parent,
                                                       const std::string& root)
    : tRepositoryTransport(""), parent_(parent), root_(relativePath(root)) {
    url = GetRootedPath(parent.GetUrl());
}

std::string tRepositoryTransportChroot::GetRootedPath(const std::string& path) const {
    return joinPath(path, root_);
}

std::string tRepositoryTransportChroot::GetRealPath(const std::string& path) const {
    return joinPath(root_, relativePath(path));
}

std::unique_ptr<irepostream> tRepositoryTransportChroot::GetFile(const std::string& path) {
    return parent_.GetFile(GetRealPath(path));
}

std::unique_ptr<orepostream> tRepositoryTransportChroot::PutFile(const std::string& path) {
    return parent_.PutFile(GetRealPath(path));
}

void tRepositoryTransportChroot::PutFile(std::istream& source, const std::string& path) {
    parent_.PutFile(source, GetRealPath(path));
}

void tRepositoryTransportChroot::Copy(const std::string& path, tRepositoryTransport& target,
                                      const std::string& targetPath) {
    parent_.Copy(GetRealPath(path), target, targetPath);
}

void tRepositoryTransportChroot::Delete(const std::string& path) {
    parent_.Delete(GetRealPath(requireInside(path)));
}

void tRepositoryTransportChroot::Move(const std::string& path, tRepositoryTransport& target,
                                      const std::string& targetPath) {
    parent_.Move(GetRealPath(path), target, targetPath);
}

void tRepositoryTransportChroot::CreateDir(const std::string& path) {
    parent_.CreateDir(GetRealPath(path));
}

void tRepositoryTransportChroot::DeleteDir(const std::string& path) {
    parent_.DeleteDir(GetRealPath(requireInside(path)));
}

void tRepositoryTransportChroot::DeleteEmptyDir(const std::string& path) {
    parent_.DeleteEmptyDir(GetRealPath(requireInside(path)));
}

void tRepositoryTransportChroot::ListDir(const std::string& path, std::vector<std::string>& names) {
    parent_.ListDir(GetRealPath(path), names);
}

void tRepositoryTransportChroot::ListDirEx(const std::string& path,
                                           std::vector<FileInfo>& entries) {
    parent_.ListDirEx(GetRealPath(path), entries);
}

bool tRepositoryTransportChroot::IsExist(const std::string& path) {
    return parent_.IsExist(GetRealPath(path));
}

bool tRepositoryTransportChroot::IsDirExist(const std::string& path) {
    return parent_.IsDirExist(GetRealPath(path));
}

bool tRepositoryTransportChroot::IsLink(const std::string& path) {
    return parent_.IsLink(GetRealPath(path));
}

std::string tRepositoryTransportChroot::GetReceivingDir() {
    const std::string dir = parent_.GetReceivingDir();
    return dir.empty() ? dir : GetRootedPath(dir);
}

void tRepositoryTransportChroot::ReceiveDir(const std::string& path) {
    parent_.ReceiveDir(GetRealPath(path));
}

CreationDateMixin tRepositoryTransportChroot::GetCreationDate(const std::string& path) {
    return parent_.GetCreationDate(GetRealPath(path));
}

std::string tRepositoryTransportChroot::GetLocalFile(const std::string& path) {
    return parent_.GetLocalFile(GetRealPath(path));
}

std::string tRepositoryTransportChroot::GetLocalDirFiles(const std::string& path,
                                                         const std::vector<std::string>& names) {
    return parent_.GetLocalDirFiles(GetRealPath(path), names);
}

std::uint64_t tRepositoryTransportChroot::GetFileSize(const std::string& path) {
    return parent_.GetFileSize(GetRealPath(path));
}

bool tRepositoryTransportChroot::SendFile(const std::string& localFile, const std::string& path) {
    return parent_.SendFile(localFile, GetRealPath(path));
}

bool tRepositoryTransportChroot::FetchFile(const std::string& path, const std::string& localFile) {
    return parent_.FetchFile(GetRealPath(path), localFile);
}

}  // namespace zelvo
