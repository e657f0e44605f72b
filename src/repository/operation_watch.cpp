#include "repository/operation_watch.h"

#include <cstdlib>

#include "commons/termination.h"

namespace zelvo {

namespace {

// The service ends the connection (RFC 959, 4.2).
constexpr int kFarewell = 421;

}  // namespace

OperationWatch::OperationWatch(CURL* handle, unsigned long limit)
    : limit_(limit), last_(std::chrono::steady_clock::now()) {
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &OperationWatch::Heard);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, &OperationWatch::Progress);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
}

// RFC 959, 4.2: the last line of a reply has a blank behind the code, and codes of less than 200
// begin a transfer.
void OperationWatch::hear(const std::string& line) {
    last_ = std::chrono::steady_clock::now();
    const int code = std::atoi(line.c_str());
    hasAnswer_ |= code != kFarewell;
    if (line.size() < 4 || line[3] != ' ') {
        return;
    }
    if (code >= 100 && code < 200) {
        replyBeforeTransfer_ = lastReply_;
    }
    lastReply_ = code;
}

void OperationWatch::lookAt(curl_off_t received, curl_off_t sent) {
    const auto now = std::chrono::steady_clock::now();
    if (received != received_ || sent != sent_) {
        received_ = received;
        sent_ = sent;
        last_ = now;
    }
    isOver_ = now - last_ >= limit_;
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t OperationWatch::Heard(char* data, std::size_t size, std::size_t count,
                                  void* watch) noexcept {
    static_cast<OperationWatch*>(watch)->hear(std::string(data, size * count));
    return size * count;
}

// libcurl calls it again and again, whatever it waits for.
int OperationWatch::Progress(void* watch, curl_off_t /*toReceive*/, curl_off_t received,
                             curl_off_t /*toSend*/, curl_off_t sent) noexcept {
    auto& self = *static_cast<OperationWatch*>(watch);
    self.lookAt(received, sent);
    // Where libcurl waits for the last reply of a transfer nobody else can ask.
    const bool isStopped = isTerminationRequested() && !isTerminationTold();
    return self.isOver() || isStopped ? 1 : 0;
}

}  // namespace zelvo
