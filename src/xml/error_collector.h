// What libxml2 says while it works, gathered as text for the message of a failure.
#pragma once

#include <string>

namespace zelvo {

// The error and warning callback of libxml2, in the form of printf. context: the std::string that
// the formatted text is appended to. Each piece arrives without its last character, usually a line
// feed: readers of result documents have always seen the texts in this form. A piece of no length
// appends nothing.
void libxmlErrorHandler(void* context, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

// Gathers what libxml2 reports through its generic error function, as long as it lives. That
// function is one for the whole process, so no two collectors may live at a time.
class ErrorCollector {
  public:
    ErrorCollector();
    // Gives the reports back to libxml2's default, standard error.
    ~ErrorCollector();
    ErrorCollector(const ErrorCollector&) = delete;
    ErrorCollector& operator=(const ErrorCollector&) = delete;

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace zelvo
