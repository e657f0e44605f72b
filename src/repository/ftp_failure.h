// How the failures of FTP are told by the transport.
#pragma once

#include <boost/filesystem/exception.hpp>
#include <string>

#include "repository/repository_errors.h"

namespace zelvo {

// The failure of the transport with this text, caused by another one, whose class it has.
TransportException ftpFailure(const std::string& text, const ExTraceable& cause);

// Runs work and returns what it returns; a failure, of the file system library too, is raised as
// one of the transport. what: stands in front of the reason.
template <class Work>
auto inTransportWords(const std::string& what, Work&& work) {
    try {
        return work();
    } catch (const ExTraceable& failure) {
        const std::string reason = failure.what();
        throw ftpFailure(what + (reason.empty() ? "unknown error" : reason), failure);
    } catch (const boost::filesystem::filesystem_error& failure) {
        throw TransportException(EXC(TransportError) % (what + failure.what()),
                                 TransportOperationStatus::kUnspecified);
    }
}

}  // namespace zelvo
