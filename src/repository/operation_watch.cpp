#include "repository/operation_watch.h"

#include <cstdlib>

namespace zelvo {

CURLcode OperationWatch::perform(CURL* handle) {
    begin();
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &OperationWatch::Heard);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &OperationWatch::Progress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    const CURLcode code = curl_easy_perform(handle);
    return isOver_ ? CURLE_OPERATION_TIMEDOUT : code;
}

void OperationWatch::begin() {
    last_ = std::chrono::steady_clock::now();
    received_ = 0;
    sent_ = 0;
    isOver_ = false;
    lastReply_ = 0;
    replyBeforeTransfer_ = 0;
}

// RFC 959, 4.2: the last line of a reply has a blank behind the code, and codes of less than 200
// begin a transfer.
void OperationWatch::hear(const std::string& line) {
    last_ = std::chrono::steady_clock::now();
    if (line.size() < 4 || line[3] != ' ') {
        return;
    }
    const int code = std::atoi(line.c_str());
    if (code >= 100 && code < 200) {
        replyBeforeTransfer_ = lastReply_;
    }
    lastReply_ = code;
}

bool OperationWatch::isOver(curl_off_t received, curl_off_t sent) {
    const auto now = std::chrono::steady_clock::now();
    if (received != received_ || sent != sent_) {
        received_ = received;
        sent_ = sent;
        last_ = now;
    }
    isOver_ = now - last_ >= limit_;
    return isOver_;
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t OperationWatch::Heard(char* data, std::size_t size, std::size_t count,
                                  void* watch) noexcept {
    static_cast<OperationWatch*>(watch)->hear(std::string(data, size * count));
    return size * count;
}

// libcurl calls it about once a second, whatever it waits for.
int OperationWatch::Progress(void* watch, curl_off_t /*toReceive*/, curl_off_t received,
                             curl_off_t /*toSend*/, curl_off_t sent) noexcept {
    return static_cast<OperationWatch*>(watch)->isOver(received, sent) ? 1 : 0;
}

}  // namespace zelvo
