#include "repository/curl_errors.h"

#include "repository/repository_log.h"

namespace zelvo {

TransportOperationStatus GetTransportStatus(const CurlException& failure) {
    switch (failure.status()) {
        case CURLE_OK:
            return TransportOperationStatus::kNone;
        case CURLE_REMOTE_ACCESS_DENIED:
        case CURLE_LOGIN_DENIED:
            return TransportOperationStatus::kAccessDenied;
        case CURLE_FTP_ACCEPT_FAILED:
        case CURLE_FTP_WEIRD_PASS_REPLY:
            return TransportOperationStatus::kBadReply;
        case CURLE_FTP_ACCEPT_TIMEOUT:
            return TransportOperationStatus::kDataTimeout;
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_FTP_CANT_GET_HOST:
            return TransportOperationStatus::kUnknownHost;
        case CURLE_COULDNT_CONNECT:
        case CURLE_HTTP2:
            return TransportOperationStatus::kNoConnection;
        default:
            return TransportOperationStatus::kUnspecified;
    }
}

std::string get_curl_error_msg(CURLcode code) { return curl_easy_strerror(code); }

void tellCurlError(CURLcode code) {
    LogError("Curl error (" + std::to_string(code) + ") : " + get_curl_error_msg(code));
}

}  // namespace zelvo
