// The reader of small documents, such as the answers of the panel's tools: values by their paths.
#pragma once

#include <string>
#include <vector>

#include "xml/xml_document.h"
#include "xml/xml_node.h"

namespace zelvo {

// An answer, read by expressions on its root element. A list is read so:
//
//     const AnswerDocument answer(text, "ipinfo");
//     for (const XmlNode& ip : answer.nodes("ip")) {
//         known.insert(ip.str("@name"));
//     }
class AnswerDocument : public tXmlRmkDocument {
  public:
    // text: the whole answer. Raises AssertionFailed for an empty text, tError_ParseFile,
    // tError_EmptyDoc, and tError_WrongDoc for another root element than rootName.
    AnswerDocument(const std::string& text, const char* rootName);

    // The root element. The queries below are those of this node and raise what it raises.
    XmlNode rootNode() const { return {doc(), root()}; }

    // The text that the expression finds, empty if there is none.
    std::string str(const std::string& expr) const { return rootNode().str(expr); }
    // The expression cast to a bool: true for an element that is there.
    bool test(const std::string& expr) const { return rootNode().test(expr); }
    // What the expression finds, in the order of the answer; good as long as the answer.
    std::vector<XmlNode> nodes(const std::string& expr) const;

    // The attribute's value, or the fallback if the element does not have it.
    std::string attributeOr(xmlNode* element, const char* name, const char* fallback) const;
};

}  // namespace zelvo
