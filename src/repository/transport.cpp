// What all transports have in common.
#include "repository/transport.h"

#include "repository/ftp_transport.h"
#include "repository/local_transport.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"
#include "repository/urls.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>

namespace zelvo {

std::unique_ptr<tRepositoryTransport> tRepositoryTransport::Get(const std::string& url) {
    LogMsg("Transport: Get repository transport " + GetUrlPlace(url));
    if (boost::trim_right_copy_if(url, boost::is_any_of("/\\")).starts_with("ftp://")) {
        return makeFtpTransport(url);
    }
    const std::string local = "local:";
    return std::make_unique<tRepositoryLocal>(url.starts_with(local) ? url.substr(local.size())
                                                                     : url);
}

std::string tRepositoryTransport::GetFullPath(const std::string& path) const {
    return url + "/" + relativePath(path);
}

void tRepositoryTransport::CreateParentDirs(const std::string& path) {
    for (auto slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        if (slash > 0 && path[slash - 1] != '/') {
            CreateDir(path.substr(0, slash));
        }
    }
}

void tRepositoryTransport::PutFile(std::istream& source, const std::string& path) {
    LogMsg("Transport: Put file to " + path);
    try {
        const std::unique_ptr<orepostream> out = PutFile(path);
        out->open();
        Pipe(source, *out);
        out->close();
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(StreamError, failure) % (failure.what() + std::string(":\n"));
    } catch (const StreamException& failure) {
        throw EXC(StreamError) % (failure.what() + std::string(":\n"));
    }
}

void tRepositoryTransport::Copy(const std::string& path, tRepositoryTransport&,
                                const std::string& targetPath) {
    LogMsg("Transport: Copy from " + path + " to " + targetPath);
    const std::unique_ptr<irepostream> in = GetFile(path);
    in->open();
    in->close();
}

void tRepositoryTransport::Move(const std::string& path, tRepositoryTransport& target,
                                const std::string& targetPath) {
    LogMsg("Transport: Move from " + path + " to " + targetPath);
    Copy(path, target, targetPath);
    Delete(path);
}

std::string NormalizeRepoUrl(const std::string& url) {
    return url.ends_with('/') || url.ends_with('\\') ? url.substr(0, url.size() - 1) : url;
}

void Pipe(std::istream& in, std::ostream& out) {
    char block[10240];
    while (true) {
        in.read(block, sizeof block);
        out.write(block, in.gcount());
        if (!in.eof() && in.fail()) {
            throw InputStreamException();
        }
        // The last block too: a full disk must not look like the end of the file.
        if (out.fail()) {
            throw OutputStreamException();
        }
        if (in.eof()) {
            return;
        }
    }
}

}  // namespace zelvo
