#include "restore/toolbox/encoded_text.h"

#include "lib/base64.h"

namespace zelvo {

std::string encodedText(const XmlNode& element) {
    const std::string text = element.str(".");
    return element.test("@encoded = 'true'") ? base64_decode(text) : text;
}

}  // namespace zelvo
