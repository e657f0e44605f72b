// In place of a transport for FTP.
#include "repository/ftp_transport.h"
#include "repository/repository_errors.h"

namespace zelvo {

std::unique_ptr<tRepositoryTransport> makeFtpTransport(const std::string& url) {
    throw TransportException(
        EXC(TransportError) % ("unable to use " + url + ": repositories on FTP are not supported"),
        TransportOperationStatus::kUnspecified);
}

}  // namespace zelvo
