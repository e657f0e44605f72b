// The schema of dumps beside those that are restored here: the examples', and those of the texts
// below this directory. Their whole outcomes are compared elsewhere.

#include "scenario.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlschemas.h>
#include <filesystem>
#include <memory>

namespace {

template <auto kFree>
struct Freeing {
    template <class T>
    void operator()(T* thing) const {
        kFree(thing);
    }
};
using Document = std::unique_ptr<xmlDoc, Freeing<xmlFreeDoc>>;

Document parsed(const std::string& text) {
    return Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr,
                                  XML_PARSE_NOBLANKS | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

// Whether the dump passes.
bool allows(xmlDoc& schema, xmlDoc& dump) {
    const Document copy(xmlCopyDoc(&schema, 1));
    const std::unique_ptr<xmlSchemaParserCtxt, Freeing<xmlSchemaFreeParserCtxt>> parser(
        xmlSchemaNewDocParserCtxt(copy.get()));
    const std::unique_ptr<xmlSchema, Freeing<xmlSchemaFree>> rules(xmlSchemaParse(parser.get()));
    const std::unique_ptr<xmlSchemaValidCtxt, Freeing<xmlSchemaFreeValidCtxt>> validation(
        xmlSchemaNewValidCtxt(rules.get()));
    const auto quiet = [](void*, auto*) {};
    xmlSchemaSetValidStructuredErrors(validation.get(), quiet, nullptr);
    return xmlSchemaValidateDoc(validation.get(), &dump) == 0;
}

// All dumps of the tests that the schema allows, as one.
class AllDumps {
  public:
    explicit AllDumps(xmlDoc& schema) : schema_(schema) {
        namespace fs = std::filesystem;
        add(example("restore.xml"));
        const std::string texts = SOURCE_DIR "/tests/system";
        for (const auto& file : fs::recursive_directory_iterator(texts)) {
            if (file.path().extension() != ".txt" || file.path().parent_path() == texts) continue;
            for (const Case& one : casesOf(fs::relative(file, texts))) {
                add(dumpOf(one));
                outcomes_ += one.part("result");
            }
        }
    }

    xmlDoc& document() const { return *all_; }
    // What the restores of them tell.
    const std::string& outcomes() const { return outcomes_; }

  private:
    void add(const std::string& text) {
        const Document dump = parsed(text);
        if (dump == nullptr || !allows(schema_, *dump)) return;
        xmlNode* const root = xmlDocGetRootElement(all_.get());
        xmlNode* const more = xmlDocGetRootElement(dump.get());
        for (xmlNode* child = more->children; child != nullptr; child = child->next) {
            xmlAddChild(root, xmlDocCopyNode(child, all_.get(), 1));
        }
    }

    xmlDoc& schema_;
    std::string outcomes_ = example("guards.txt") + sourceFile("examples/whole-server/guards.txt");
    Document all_ = parsed(sourceFile("examples/whole-server/restore.xml"));
};

bool isA(xmlNode* node, const std::string& kind) {
    return kind == reinterpret_cast<const char*>(node->name);
}

// The names of elements and attributes, and the words of closed lists, but for what may have other
// names too: global elements, and what stands beside such attributes.
void collectNames(xmlNode* node, std::vector<xmlAttr*>& names) {
    for (; node != nullptr; node = node->next) {
        const char* attribute = isA(node, "enumeration") ? "value" : "name";
        const bool isOneOfMany = node->parent == xmlDocGetRootElement(node->doc) ||
                                 (node->next != nullptr && isA(node->next, "anyAttribute"));
        xmlAttr* name = xmlHasProp(node, reinterpret_cast<const xmlChar*>(attribute));
        if (name != nullptr && !isOneOfMany) names.push_back(name);
        if (node->type == XML_ELEMENT_NODE) collectNames(node->children, names);
    }
}

// Catches: an element, an attribute or a word that no test restores, and so none would miss:
// without it in the schema the dumps would still pass.
TEST(Schema, HasNothingThatNoDumpHas) {
    const Document schema = parsed(sourceFile("share/RMK/restore-specification.xsd"));
    const AllDumps dumps(*schema);
    EXPECT_EQ(countOf(dumps.outcomes(), "NotSupportedOperation"), 0);
    std::vector<xmlAttr*> names;
    collectNames(xmlDocGetRootElement(schema.get()), names);
    ASSERT_TRUE(allows(*schema, dumps.document()));
    for (xmlAttr* name : names) {
        const std::string word = reinterpret_cast<const char*>(name->children->content);
        xmlNodeSetContent(name->children, reinterpret_cast<const xmlChar*>("nobody-has-this"));
        EXPECT_FALSE(allows(*schema, dumps.document()))
            << "line " << name->parent->line << ": " << word;
        xmlNodeSetContent(name->children, reinterpret_cast<const xmlChar*>(word.c_str()));
    }
}

}  // namespace
