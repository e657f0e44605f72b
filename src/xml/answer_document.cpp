#include "xml/answer_document.h"

#include "xml/xml_errors.h"

namespace zelvo {

AnswerDocument::AnswerDocument(const std::string& text, const char* rootName)
    : tXmlRmkDocument(text) {
    initFileDoc(rootName);
}

std::vector<XmlNode> AnswerDocument::nodes(const std::string& expr) const {
    std::vector<XmlNode> found;
    for (XmlNodeIterator node = rootNode().iterate(expr); !node.atEnd(); ++node) {
        found.push_back(*node);
    }
    return found;
}

std::string AnswerDocument::attributeOr(xmlNode* element, const char* name,
                                        const char* fallback) const {
    try {
        return getAttribute(element, name);
    } catch (const Exc<&NoSuchAttribute>&) {
        return fallback;
    }
}

}  // namespace zelvo
