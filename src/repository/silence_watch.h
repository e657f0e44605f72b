// The end of an operation of libcurl in which nothing happens any more.
#pragma once

#include <curl/curl.h>

#include <chrono>

namespace zelvo {

// Watches what comes and goes, on the control connection too, of which libcurl's own lower limit of
// speed knows nothing.
class SilenceWatch {
  public:
    // limit: how long it may be silent, in seconds.
    explicit SilenceWatch(unsigned long limit) : limit_(limit) {}

    // Runs the operation that handle is set to. Returns libcurl's result, for a silent one that of
    // a time that is over. Takes the handle's functions for progress and for headers.
    CURLcode perform(CURL* handle);

  private:
    void begin();
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
};

}  // namespace zelvo
