// The failures of libcurl.
#pragma once

#include <curl/curl.h>

#include <string>

#include "repository/repository_errors.h"

ERROR_TAG(CurlError, "%1%");

namespace zelvo {

// A failure with the result code that libcurl gave.
using CurlException = StatusException<&CurlError, CURLcode>;

// The class of a failure, for those who do not know libcurl.
TransportOperationStatus GetTransportStatus(const CurlException& failure);

// libcurl's text of a result code.
std::string get_curl_error_msg(CURLcode code);

// Logs a result that is a failure.
void tellCurlError(CURLcode code);

}  // namespace zelvo
