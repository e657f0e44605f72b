// What happens in an operation of libcurl, and its end where nothing does any more.
#pragma once

#include <curl/curl.h>

#include <chrono>
#include <string>

namespace zelvo {

// Watches what comes and goes, on the control connection too, of which libcurl's own lower limit of
// speed knows nothing.
class OperationWatch {
  public:
    // limit: how long it may be silent, in seconds.
    explicit OperationWatch(unsigned long limit) : limit_(limit) {}

    // Runs the operation that handle is set to. Returns libcurl's result, for a silent one that of
    // a time that is over. Takes the handle's functions for progress and for headers.
    CURLcode perform(CURL* handle);
    // The code of the server's reply in front of that which began a transfer; 0 if none began.
    int replyBeforeTransfer() const { return replyBeforeTransfer_; }

  private:
    void begin();
    void hear(const std::string& line);
    bool isOver(curl_off_t received, curl_off_t sent);

    // libcurl's callbacks.
    static std::size_t Heard(char* data, std::size_t size, std::size_t count, void* watch) noexcept;
    static int Progress(void* watch, curl_off_t toReceive, curl_off_t received, curl_off_t toSend,
                        curl_off_t sent) noexcept;

    std::chrono::seconds limit_;
    std::chrono::steady_clock::time_point last_;
    curl_off_t received_ = 0;
    curl_off_t sent_ = 0;
    bool isOver_ = false;
    int lastReply_ = 0;
    int replyBeforeTransfer_ = 0;
};

}  // namespace zelvo
