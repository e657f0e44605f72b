#include "report/xml_formatter.h"

namespace zelvo {

void XmlMsgFormatter::setCode(const std::string& code) {
    document_.addAttribute(element_, "code", code);
    document_.addAttribute(element_, "severity", "error");
}

void XmlMsgFormatter::setMessage(const std::string& message) {
    document_.newTextChild(element_, "text", message);
}

void XmlMsgFormatter::setContext(const std::string& context) {
    document_.newTextChild(element_, "context", context);
}

void XmlMsgFormatter::setFile(const std::string& file) {
    document_.newTextChild(element_, "file", file);
}

void XmlMsgFormatter::setLine(int line) {
    document_.newTextChild(element_, "line", std::to_string(line));
}

void XmlMsgFormatter::advanceToInnerException() {
    element_ = document_.newChild(element_, "message");
}

}  // namespace zelvo
