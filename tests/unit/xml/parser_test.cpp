#include "xml/parser.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <vector>

#include "xml/pointer.h"

namespace zelvo {
namespace {

// The order numbers of the elements, as queries read them.
void appendNumbers(const xmlNode* node, std::vector<ptrdiff_t>& numbers) {
    for (; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE) {
            numbers.push_back(reinterpret_cast<ptrdiff_t>(node->content));
            appendNumbers(node->children, numbers);
        }
    }
}

std::vector<ptrdiff_t> numbersIn(const xmlDoc* doc) {
    std::vector<ptrdiff_t> numbers;
    appendNumbers(doc->children, numbers);
    return numbers;
}

// Catches numbers that are none to libxml2, which would compare nodes by walking all siblings, or
// in a wrong order: those of the library's own function are the measure.
TEST(Parser, NumbersElementsAsTheLibraryDoes) {
    const XmlDocPtr doc(parseXmlText(
        "<!DOCTYPE r [<!ENTITY e '<x/><x/>'>]><!-- c --><r><a><b>1</b>2<b/></a><?p q?><a/></r>"));
    const std::vector<ptrdiff_t> numbers = numbersIn(doc.get());
    EXPECT_EQ(xmlXPathOrderDocElems(doc.get()), 5);
    EXPECT_EQ(numbers, numbersIn(doc.get()));
}

}  // namespace
}  // namespace zelvo
