// The transport of a repository on an FTP server.
#pragma once

#include <memory>
#include <string>

#include "repository/transport.h"

namespace zelvo {

// url: begins with "ftp://"; without login.
std::unique_ptr<tRepositoryTransport> makeFtpTransport(const std::string& url);

}  // namespace zelvo
