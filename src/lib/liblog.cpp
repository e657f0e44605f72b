#include "lib/liblog.h"

#include <strings.h>
#include <syslog.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const char* programPath = nullptr;
int consoleLevel = 0;

// A text that is built in a fixed buffer and moves to the heap when it outgrows it. It raises
// nothing: a message about a lack of memory has to get out too.
class MessageText {
  public:
    MessageText() = default;
    ~MessageText() { free(heap_); }
    MessageText(const MessageText&) = delete;
    MessageText& operator=(const MessageText&) = delete;

    // Both return false if there is no memory for the text.
    bool append(const char* format, ...) __attribute__((format(printf, 2, 3)));
    bool vappend(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));

    const char* text() const { return heap_ != nullptr ? heap_ : fixed_; }

  private:
    char* end() { return (heap_ != nullptr ? heap_ : fixed_) + length_; }
    std::size_t room() const { return size_ - length_; }
    bool grow(std::size_t size);

    char fixed_[4096] = "";
    char* heap_ = nullptr;
    std::size_t size_ = sizeof(fixed_);
    std::size_t length_ = 0;
};

bool MessageText::append(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const bool done = vappend(format, arguments);
    va_end(arguments);
    return done;
}

bool MessageText::vappend(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int needed = vsnprintf(end(), room(), format, arguments);
    bool done = needed >= 0;
    const std::size_t length = done ? static_cast<std::size_t>(needed) : 0;
    if (done && length >= room()) {
        done = grow(length_ + length + 1) && vsnprintf(end(), room(), format, again) == needed;
    }
    va_end(again);
    length_ += done ? length : 0;
    return done;
}

bool MessageText::grow(std::size_t size) {
    char* larger = static_cast<char*>(realloc(heap_, size));
    if (larger == nullptr) {
        return false;
    }
    if (heap_ == nullptr) {
        memcpy(larger, fixed_, length_);
    }
    heap_ = larger;
    size_ = size;
    return true;
}

const char* baseName(const char* path) {
    const char* slash = strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

void endLine(const char* text, FILE* stream) {
    const std::size_t length = strlen(text);
    if (length == 0 || text[length - 1] != '\n') {
        fputc('\n', stream);
    }
}

void writeMessage(const char* text, FILE* stream) {
    if (programPath != nullptr) {
        fputs(baseName(programPath), stream);
        fputs(": ", stream);
    }
    fputs(text, stream);
    endLine(text, stream);
    fflush(stream);
}

__attribute__((format(printf, 2, 3))) void silentLog(int, const char*, ...) {}

__attribute__((format(printf, 2, 0))) void silentLogv(int, const char*, va_list) {}

__attribute__((format(printf, 2, 0))) void consoleLogv(int priority, const char* format,
                                                       va_list arguments) {
    if (LOG_PRI(priority) <= consoleLevel) {
        vfprintf(stderr, format, arguments);
        endLine(format, stderr);
    }
}

__attribute__((format(printf, 2, 3))) void consoleLog(int priority, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    consoleLogv(priority, format, arguments);
    va_end(arguments);
}

}  // namespace

zelvo_log_function zelvo_log = silentLog;
zelvo_logv_function zelvo_logv = silentLogv;

void messlog2(int exitCode, int flag, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    vmesslog2(exitCode, flag, format, arguments);
    va_end(arguments);
}

void vmesslog2(int exitCode, int flag, const char* format, va_list arguments) {
    const int number = errno;
    MessageText message;
    const bool complete =
        message.vappend(format, arguments) &&
        (number == 0 || message.append("\nSystem error %d: %s", number, strerror(number)));
    ex_messlog(complete ? message.text() : "Can't allocate memory for error message", exitCode,
               flag);
    errno = number;
}

void ex_messlog(const char* text, int exitCode, int /*flag*/) {
    writeMessage(text, stderr);
    writeMessage(text, stdout);
    if (exitCode != 0) {
        exit(exitCode);
    }
}

void zelvo_set_program_name(const char* path) { programPath = path; }

void zelvo_log_init(const char* target, int level, int facility, int options, const char* ident) {
    zelvo_log = silentLog;
    zelvo_logv = silentLogv;
    consoleLevel = level < 1 ? 0 : level;
    if (level < 1) {
        return;
    }
    if (target == nullptr) {
        closelog();
        openlog(ident, options | LOG_PID, facility);
        zelvo_log = syslog;
        zelvo_logv = vsyslog;
    } else if (strncasecmp(target, "console", strlen("console")) == 0) {
        zelvo_log = consoleLog;
        zelvo_logv = consoleLogv;
    }
}
