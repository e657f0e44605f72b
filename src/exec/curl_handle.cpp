#include "exec/curl_handle.h"

#include <curl/curl.h>

namespace zelvo {

void CurlHandleCloser::operator()(void* handle) const { curl_easy_cleanup(handle); }

void CurlListFreer::operator()(curl_slist* list) const { curl_slist_free_all(list); }

}  // namespace zelvo
