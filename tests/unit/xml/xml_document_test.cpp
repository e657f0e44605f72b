#include <libxml/xpath.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "panel_box.h"
#include "xml/validation.h"
#include "xml/xml_node.h"
#include "xml/xml_text.h"

namespace zelvo {
namespace {

using namespace std::string_literals;
using test::faultOf;
using Document = tXmlRmkDocument;

const TempDir dir;

// Catches a check that is left out, swapped names, and an error text of another length.
const std::pair<const char*, void (*)(Document&)> kRefusals[] = {
    {"tError_ParseFile: The XML file - was not parsed successfully with the following errors:\n"
     "Entity: line 2:parsererror :Opening and ending tag mismatch: b line 2 and a<b></a>       ^"
     "Entity: line 2:parsererror :Premature end of data in tag a line 1<b></a>       ^",
     [](Document&) { Document("<a>\n<b></a>"s); }},
    {"tError_WrongDoc: The document has the wrong type, root node is <r>, but <x> was expected",
     [](Document& read) { read.initFileDoc("x"); }},
    {"tError_WrongContent: Can not find 'z' element in 'r' element.",
     [](Document& read) { read.getRootNodeChild("z"); }},
};

TEST(XmlDocument, ReadersRefuseWhatIsNotThere) {
    for (const auto& [fault, call] : kRefusals) {
        Document read("<r/>"s);
        read.initFileDoc("r");
        EXPECT_EQ(faultOf([&, call = call] { call(read); }), fault);
    }
}

// Catches numbers that are none to libxml2, which would compare nodes by walking all siblings:
// those of the library's own function are the measure.
TEST(XmlDocument, ElementsAreNumberedAsTheLibraryDoes) {
    const Document document(
        "<!DOCTYPE r [<!ENTITY e '<x/>'>]><r><a><b>1</b>2<b/></a><?p q?><!-- c --><a/></r>"s);
    std::vector<ptrdiff_t> numbers;
    const auto note = [&](const XmlNode& node) {
        numbers.push_back(reinterpret_cast<ptrdiff_t>(node.node()->content));
    };
    XmlNode(document.doc(), nullptr).foreach ("//*", note, nullptr);
    const auto own = std::exchange(numbers, {});
    EXPECT_EQ(xmlXPathOrderDocElems(document.doc()), 5);
    XmlNode(document.doc(), nullptr).foreach ("//*", note, nullptr);
    EXPECT_EQ(own, numbers);
}

// Catches a byte sequence that passes as a character, and one that is dropped.
TEST(XmlDocument, TextHoldsOnlyWhatXmlCanHold) {
    const std::string bad = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"\t\n\r~\x7F\xC3\xA9\xF0\x9F\x98\x80", "\t\n\r~\x7F\xC3\xA9\xF0\x9F\x98\x80"},
        {"a\0b\x1B"s, "a" + bad + "b" + bad},
        {"caf\xE9\xE2\x82\x80", "caf\xC3\xA9\xE2\x82\x80"},             // ISO-8859-1
        {"\xE2\x82", "\xC3\xA2\xC2\x82"},                               // cut off
        {"\xC0\xBC", "\xC3\x80\xC2\xBC"},                               // '<' in two bytes
        {"\xE0\x80\xBC", "\xC3\xA0\xC2\x80\xC2\xBC"},                   // in three
        {"\xED\xA0\x80\xEF\xBF\xBE\xF4\x90\x80\x80", bad + bad + bad},  // no characters
    };
    for (const auto& [given, expected] : cases) EXPECT_EQ(toXmlText(given), expected);
}

// Catches a target that is written in place or under a name that was decoded, a temporary file that
// stays.
TEST(AtomicSave, ReadersSeeWholeDocumentsOnly) {
    const TempDir home;
    const std::string path = home.path("50%41");
    const std::string texts[] = {
        "<?xml version=\"1.0\"?>\n<a>" + std::string(200'000, 'x') + "</a>\n",
        "<?xml version=\"1.0\"?>\n<b/>\n"};
    Document documents[] = {Document(texts[0]), Document(texts[1])};
    documents[0].saveToFileAtomically(path, Durability::kSynced);
    std::atomic<int> torn = 0, reads = 0;
    std::jthread reader([&](const std::stop_token& stop) {
        for (; !stop.stop_requested(); ++reads) {
            torn += std::ranges::count(texts, contentOf(path)) == 0;
        }
    });
    for (int round = 0; round < 50 || reads < 50; ++round) {
        documents[round % 2].saveToFileAtomically(path);
    }
    reader = {};
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home.path("")), {}), 1);
}

// Catches a failed rename that goes unnoticed or that harms the target.
TEST(AtomicSave, LeavesATargetThatItCannotReplace) {
    const std::string path = dir.path("target");
    std::filesystem::create_directories(path + "/kept");
    const std::string fault = faultOf([&] { Document().saveToFileAtomically(path); });
    EXPECT_TRUE(fault.starts_with("CantRenameFile: Cannot rename " + path)) << fault;
    EXPECT_TRUE(fault.ends_with(" to " + path + ": Is a directory")) << fault;
    EXPECT_TRUE(std::filesystem::exists(path + "/kept"));
}

// What fails when a document is checked against a schema or, without one, its own DTD.
std::string check(const std::string& text, const std::string& schema) {
    const std::string file = dir.write("file", schema);
    tXmlDocument document(text);
    return faultOf([&] {
        if (schema.empty()) return tDtdValidator().validateXml(document);
        validateSchema(document, file);
    });
}

// Catches diagnostics that are lost, kept whole or told under another code, and schemas that are
// fetched from elsewhere.
TEST(Checks, TellWhatIsWrong) {
    const std::string internal =
        "InternalDtdValidationFailed: Failed validation of the document "
        "with its internal DTD. The errors are: ";
    const std::string schema = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>";
    const std::string empty = "Element r was declared EMPTY this one has content.";
    const std::string cases[][3] = {
        {"<!DOCTYPE r [<!ELEMENT r EMPTY>]><r/>", "", ""},
        {"<!DOCTYPE r [<!ELEMENT r EMPTY>]><r>x</r>", "", internal + empty},
        {"<r>x</r>", schema + "<xs:element name='r' type='xs:int'/></xs:schema>",
         internal + "Element 'r': 'x' is not a valid value of the atomic type 'xs:int'.."},
        {"<r/>", schema + "<xs:include schemaLocation='http://127.0.0.1:9/'/></xs:schema>",
         "tError_XmlInternal: Can not allocate memory for xmlSchemaParse"},
    };
    testing::internal::CaptureStderr();
    for (const auto& [text, content, fault] : cases) EXPECT_EQ(check(text, content), fault);
    testing::internal::GetCapturedStderr();
}

}  // namespace
}  // namespace zelvo
