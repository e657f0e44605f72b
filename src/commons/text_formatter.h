// The plain text form of a failure, for the debug log and standard error.
#pragma once

#include <string>

#include "commons/exception.h"

namespace zelvo {

// Gathers a failure and what caused it as text: "CODE: MESSAGE [FILE:LINE]" for each, joined by
// "\nInner exception:\n", with no line feed at the end.
class TextMsgFormatter : public ExInfoVisitor {
  public:
    void setCode(const std::string& code) override { code_ = code; }
    void setMessage(const std::string& message) override { message_ = message; }
    void setContext(const std::string& context) override { context_ = context; }
    void setFile(const std::string& file) override { file_ = file; }
    void setLine(int line) override { line_ = line; }
    void advanceToInnerException() override;

    // Appends the part that was read last; to be called once more behind the last part.
    void formatPart();

    const std::string& text() const { return text_; }

  private:
    std::string text_;
    std::string code_;
    std::string context_;
    std::string file_;
    int line_ = 0;
    std::string message_;
};

// The text form of a failure with all that caused it.
std::string formatPlainTextMessage(const ExTraceable& failure);

}  // namespace zelvo
