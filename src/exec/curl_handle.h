// Owners of what libcurl gives.
#pragma once

#include <memory>

struct curl_slist;

namespace zelvo {

struct CurlHandleCloser {
    void operator()(void* handle) const;
};
// An easy handle, with the connections that it keeps.
using CurlHandle = std::unique_ptr<void, CurlHandleCloser>;

struct CurlListFreer {
    void operator()(curl_slist* list) const;
};
// A list of texts, such as headers or commands.
using CurlList = std::unique_ptr<curl_slist, CurlListFreer>;

}  // namespace zelvo
