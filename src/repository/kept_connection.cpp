#include "repository/kept_connection.h"

#include <sys/socket.h>

#include <new>

#include "commons/termination.h"

namespace zelvo {

namespace {

// How long a request to stop and a step that libcurl has no event for may wait, in milliseconds.
constexpr int kPatience = 50;
// For an operation of a run that was asked to stop, in seconds.
constexpr long kTimeAfterStop = 30;

CURLcode codeOf(CURLMcode code) {
    return code == CURLM_OUT_OF_MEMORY ? CURLE_OUT_OF_MEMORY : CURLE_FAILED_INIT;
}

void heedRequestToStop() {
    if (isTerminationRequested() && !isTerminationTold()) {
        throw MigrationTerminatedException();
    }
}

// The result of the one operation that is over.
CURLcode resultIn(CURLM* multi) {
    int left = 0;
    const CURLMsg* const message = curl_multi_info_read(multi, &left);
    return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
}

}  // namespace

// A handle while it runs. One that is taken away before its operation is over closes its
// connection.
class KeptConnection::Attached {
  public:
    Attached(KeptConnection& owner, CURL* handle) : owner_(owner), handle_(handle) {
        const CURLMcode code = curl_multi_add_handle(owner.multi_.get(), handle);
        if (code != CURLM_OK) {
            throw std::bad_alloc();
        }
    }
    ~Attached() {
        // libcurl knows it as long as the handle is there.
        owner_.control_ = CURL_SOCKET_BAD;
        curl_easy_getinfo(handle_, CURLINFO_ACTIVESOCKET, &owner_.control_);
        curl_multi_remove_handle(owner_.multi_.get(), handle_);
    }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;

  private:
    KeptConnection& owner_;
    CURL* handle_;
};

CURLcode KeptConnection::perform(CURL* handle) {
    heedRequestToStop();
    open();
    if (isTerminationRequested()) {
        curl_easy_setopt(handle, CURLOPT_TIMEOUT, kTimeAfterStop);
    }
    const Attached attached(*this, handle);
    return finish();
}

// libcurl's own loop waits up to a second for what happens without an event, such as the answer to
// a data connection that it has made.
CURLcode KeptConnection::finish() {
    int running = 1;
    while (true) {
        CURLMcode code = curl_multi_perform(multi_.get(), &running);
        if (running == 0) {
            const CURLcode result = resultIn(multi_.get());
            if (result == CURLE_ABORTED_BY_CALLBACK) {
                heedRequestToStop();
            }
            return result;
        }
        heedRequestToStop();
        if (code == CURLM_OK) {
            code = curl_multi_poll(multi_.get(), nullptr, 0, kPatience, nullptr);
        }
        if (code != CURLM_OK) {
            return codeOf(code);
        }
    }
}

void KeptConnection::open() {
    if (multi_ == nullptr) {
        multi_.reset(curl_multi_init());
    }
    if (multi_ == nullptr) {
        throw std::bad_alloc();
    }
}

void KeptConnection::drop() {
    if (control_ != CURL_SOCKET_BAD) {
        // libcurl would send QUIT and wait, for up to two minutes, for what nobody needs.
        shutdown(control_, SHUT_RD);
        control_ = CURL_SOCKET_BAD;
    }
    multi_.reset();
}

}  // namespace zelvo
