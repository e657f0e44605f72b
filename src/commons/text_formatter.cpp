#include "commons/text_formatter.h"

namespace zelvo {

void TextMsgFormatter::formatPart() {
    text_ += (boost::format("%1%: %2% [%3%:%4%]") % code_ % message_ % file_ % line_).str();
    // A part without a place of its own must not show the place of the part before it.
    context_.clear();
    file_.clear();
    line_ = 0;
}

void TextMsgFormatter::advanceToInnerException() {
    formatPart();
    text_ += "\nInner exception:\n";
}

std::string formatPlainTextMessage(const ExTraceable& failure) {
    TextMsgFormatter formatter;
    failure.accept(formatter);
    formatter.formatPart();
    return formatter.text();
}

}  // namespace zelvo
