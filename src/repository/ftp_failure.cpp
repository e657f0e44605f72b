#include "repository/ftp_failure.h"

#include "repository/curl_errors.h"

namespace zelvo {

namespace {

TransportOperationStatus statusOf(const ExTraceable& failure) {
    if (const auto* const curl = dynamic_cast<const CurlException*>(&failure)) {
        return GetTransportStatus(*curl);
    }
    const auto* const transport = dynamic_cast<const TransportException*>(&failure);
    return transport != nullptr ? transport->status() : TransportOperationStatus::kUnspecified;
}

}  // namespace

TransportException ftpFailure(const std::string& text, const ExTraceable& cause) {
    return {EXC_INNER(TransportError, cause) % text, statusOf(cause)};
}

}  // namespace zelvo
