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
    // Takes the handle's functions for progress and for headers; it must not run any more when the
    // watch is gone. limit: how long it may be silent, in seconds.
    OperationWatch(CURL* handle, unsigned long limit);
    OperationWatch(const OperationWatch&) = delete;
    OperationWatch& operator=(const OperationWatch&) = delete;

    // Whether the operation was ended for its silence.
    bool isOver() const { return isOver_; }
    // Whether the server said anything but that it ends the connection.
    bool hasAnswer() const { return hasAnswer_; }
    // The code of the server's reply in front of that which began a transfer; 0 if none began.
    int replyBeforeTransfer() const { return replyBeforeTransfer_; }

  private:
    void hear(const std::string& line);
    void lookAt(curl_off_t received, curl_off_t sent);

    // libcurl's callbacks.
    static std::size_t Heard(char* data, std::size_t size, std::size_t count, void* watch) noexcept;
    static int Progress(void* watch, curl_off_t toReceive, curl_off_t received, curl_off_t toSend,
                        curl_off_t sent) noexcept;

    std::chrono::seconds limit_;
    std::chrono::steady_clock::time_point last_;
    curl_off_t received_ = 0;
    curl_off_t sent_ = 0;
    bool isOver_ = false;
    bool hasAnswer_ = false;
    int lastReply_ = 0;
    int replyBeforeTransfer_ = 0;
};

}  // namespace zelvo
