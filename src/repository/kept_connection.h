// The operations of a libcurl handle, one after the other on one connection.
#pragma once

#include <curl/curl.h>

#include <memory>

namespace zelvo {

class KeptConnection {
  public:
    KeptConnection() = default;
    ~KeptConnection() { drop(); }
    KeptConnection(const KeptConnection&) = delete;
    KeptConnection& operator=(const KeptConnection&) = delete;

    // Runs what the handle is set to. Returns libcurl's result. Raises MigrationTerminatedException
    // when the run is asked to stop and nobody has raised it yet; what follows puts in order what
    // was left, and gets no more than half a minute each. Raises bad_alloc.
    CURLcode perform(CURL* handle);

    // Ends the connection. Waits for no farewell.
    void drop();

  private:
    struct MultiCloser {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };
    class Attached;

    void open();
    // Runs what is attached to its end.
    CURLcode finish();

    std::unique_ptr<CURLM, MultiCloser> multi_;
    // Of the connection that is kept.
    curl_socket_t control_ = CURL_SOCKET_BAD;
};

}  // namespace zelvo
