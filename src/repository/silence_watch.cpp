#include "repository/silence_watch.h"

namespace zelvo {

CURLcode SilenceWatch::perform(CURL* handle) {
    begin();
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &SilenceWatch::Heard);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &SilenceWatch::Progress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    const CURLcode code = curl_easy_perform(handle);
    return isOver_ ? CURLE_OPERATION_TIMEDOUT : code;
}

void SilenceWatch::begin() {
    last_ = std::chrono::steady_clock::now();
    received_ = 0;
    sent_ = 0;
    isOver_ = false;
}

bool SilenceWatch::isOver(curl_off_t received, curl_off_t sent) {
    const auto now = std::chrono::steady_clock::now();
    if (received != received_ || sent != sent_) {
        received_ = received;
        sent_ = sent;
        last_ = now;
    }
    isOver_ = now - last_ >= limit_;
    return isOver_;
}

// A reply of the server.
// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t SilenceWatch::Heard(char* /*data*/, std::size_t size, std::size_t count,
                                void* watch) noexcept {
    static_cast<SilenceWatch*>(watch)->last_ = std::chrono::steady_clock::now();
    return size * count;
}

// libcurl calls it about once a second, whatever it waits for.
int SilenceWatch::Progress(void* watch, curl_off_t /*toReceive*/, curl_off_t received,
                           curl_off_t /*toSend*/, curl_off_t sent) noexcept {
    return static_cast<SilenceWatch*>(watch)->isOver(received, sent) ? 1 : 0;
}

}  // namespace zelvo
