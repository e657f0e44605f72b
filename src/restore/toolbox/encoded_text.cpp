#include "restore/toolbox/encoded_text.h"

#include "lib/base64.h"
#include "restore/toolbox/restore_errors.h"

namespace zelvo {

std::string textOfBase64(const std::string& base64, const std::string& what) {
    std::string text = base64_decode(base64);
    if (text.find('\0') != std::string::npos) {
        throw EXC(UnsafeText) % what;
    }
    return text;
}

std::string encodedText(const XmlNode& element) {
    const std::string text = element.str(".");
    return element.test("@encoded = 'true'") ? textOfBase64(text, "'" + element.str("@name") + "'")
                                             : text;
}

}  // namespace zelvo
