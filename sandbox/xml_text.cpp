#include "xml_text.h"

namespace sandbox {

std::string xmlText(std::string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            // A bare carriage return would come back as a newline.
            case '\r':
                out += "&#13;";
                break;
            case '\n':
            case '\t':
                out += c;
                break;
            default:
                out += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
        }
    }
    return out;
}

}  // namespace sandbox
