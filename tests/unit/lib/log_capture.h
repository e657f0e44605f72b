// Hears what the C layer logs.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

#include "lib/liblog.h"

// Takes the place of zelvo_log while it lives; one at a time.
class LogCapture {
  public:
    LogCapture() : before_(zelvo_log) {
        heard().clear();
        zelvo_log = listen;
    }
    ~LogCapture() { zelvo_log = before_; }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // Each message as "PRIORITY TEXT|".
    const std::string& text() const { return heard(); }

  private:
    static std::string& heard() {
        static std::string text;
        return text;
    }
    __attribute__((format(printf, 2, 3))) static void listen(int priority, const char* format,
                                                             ...) {
        char text[1024];
        va_list arguments;
        va_start(arguments, format);
        vsnprintf(text, sizeof(text), format, arguments);
        va_end(arguments);
        heard() += std::to_string(priority) + " " + text + "|";
    }

    zelvo_log_function before_;
};
