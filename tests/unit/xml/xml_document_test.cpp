#include "xml/xml_document.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>
#include <unistd.h>

#include <sstream>

#include "fault.h"
#include "panel_box.h"
#include "xml/xml_node.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

std::string saved(tXmlDocument& document) {
    std::ostringstream stream;
    document.saveToStream(stream);
    return stream.str();
}

// Catches an input test that is left out, or that speaks of another name.
TEST(XmlDocument, WantsARegularFile) {
    const test::TempDir dir;
    for (const std::string& name : {(dir / "none").string(), dir.path().string()}) {
        EXPECT_EQ(faultOf([&] { tXmlDocument document(name.c_str()); }),
                  Fault("tError_WrongInputFile",
                        "The XML file does not exist or is not a regular file. Check the file '" +
                            name + "'"));
    }
    const Fault null("AssertionFailed", "Assertion failed: filename != NULL");
    const Fault empty("AssertionFailed", "Assertion failed: *filename != 0");
    tXmlDocument document;
    EXPECT_EQ(faultOf([&] { document.readFromFile(nullptr); }), null);
    EXPECT_EQ(faultOf([&] { document.readFromFile(""); }), empty);
    EXPECT_EQ(faultOf([&] { document.saveToFile(static_cast<const char*>(nullptr)); }), null);
    EXPECT_EQ(faultOf([&] { document.saveToFile(std::string()); }), empty);
    EXPECT_EQ(faultOf([] { tXmlDocument{std::string()}; }),
              Fault("AssertionFailed", "Assertion failed: content.size()"));
    EXPECT_EQ(faultOf([&] { document.saveToBuffer(nullptr); }),
              Fault("AssertionFailed", "Assertion failed: buffer != 0"));
}

// Catches a file test that is applied to standard input.
TEST(XmlDocument, ReadsStandardInput) {
    const test::TempDir dir;
    test::writeFile(dir / "in", "<a>from stdin</a>");
    const int before = dup(STDIN_FILENO);
    ASSERT_NE(freopen((dir / "in").c_str(), "r", stdin), nullptr);
    const tXmlDocument document("-");
    EXPECT_EQ(XmlNode(document.doc(), nullptr).str("/a"), "from stdin");
    dup2(before, STDIN_FILENO);
    close(before);
}

// Catches swapped arguments, which the template takes in the reverse order.
TEST(XmlDocument, NamesTheExpectedAndTheFoundRoot) {
    tXmlRmkDocument document(std::string("<found/>"));
    EXPECT_EQ(faultOf([&] { document.initFileDoc("expected"); }),
              Fault("tError_WrongDoc",
                    "The document has the wrong type, root node is <found>, but <expected> was "
                    "expected"));
    tXmlRmkDocument empty;
    EXPECT_EQ(
        faultOf([&] { empty.initFileDoc("expected"); }),
        Fault("tError_EmptyDoc", "The document is empty. Can not find root element <expected>"));
}

// Catches texts of the readers, and an empty attribute that is taken for a missing one.
TEST(XmlDocument, ReadsChildrenAttributesAndText) {
    tXmlRmkDocument document(
        std::string("<!DOCTYPE r [<!ENTITY e 'wide'>]>"
                    "<r><x set='' n='1'>a &e; world</x><y/><x>2</x></r>"));
    document.initFileDoc("r");
    xmlNode* x = document.getRootNodeChild("x");
    EXPECT_EQ(document.getNodeText(x), "a wide world");
    EXPECT_EQ(document.getAttribute(x, "set"), "");
    EXPECT_EQ(document.getAttribute(x, "n"), "1");
    EXPECT_EQ(faultOf([&] { document.getAttribute(x, "none"); }),
              Fault("NoSuchAttribute", "Node x does not have attribute none"));
    EXPECT_EQ(faultOf([&] { document.getRootNodeChild("z"); }),
              Fault("tError_WrongContent", "Can not find 'z' element in 'r' element."));
    EXPECT_THROW(document.getNodeText(document.getRootNodeChild("y")), std::logic_error);
}

// Catches markup that becomes structure, and a document that nobody can read back.
TEST(XmlDocument, WritesForeignTextSafely) {
    tXmlRmkDocument document;
    document.initNewDoc("r");
    xmlNode* child = document.newTextChild(document.root(), "t", "<b>&amp; \x1B[1m\xE9 \xC3\xA9");
    document.addAttribute(child, "a", "\"<&\n\x02");
    document.addAttribute(child, "a",
                          std::string("1\0"
                                      "2",
                                      3));
    EXPECT_EQ(document.newTextChild(nullptr, "pid", "1"), nullptr);
    document.newChild(document.root(), "empty");
    const std::string text = saved(document);
    EXPECT_EQ(
        text,
        "<?xml version=\"1.0\"?>\n"
        "<r><t a=\"1&#xFFFD;2\">&lt;b&gt;&amp;amp; &#xFFFD;[1m&#xE9; &#xE9;</t><empty/></r>\n");
    EXPECT_NO_THROW(tXmlDocument{text});
}

// Catches a save that does not follow the encoding of what was read.
TEST(XmlDocument, KeepsTheEncodingOfTheInput) {
    const std::string text = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>\xE9</a>\n";
    tXmlDocument document{text};
    const test::TempDir dir;
    document.saveToFile((dir / "out").string());
    EXPECT_EQ(test::readFile(dir / "out"), text);
    EXPECT_EQ(saved(document), text);
}

// Catches a name that libxml2 takes for a URI and decodes.
TEST(XmlDocument, SavesUnderExactlyTheGivenName) {
    const test::TempDir dir;
    tXmlRmkDocument document;
    document.initNewDoc("r");
    for (const char* name : {"50%41", "a b%41", "per%", "http:x", "caf\xC3\xA9%20"}) {
        document.saveToFile((dir / name).string());
        EXPECT_EQ(test::namesIn(dir.path()), std::set<std::string>{name});
        std::filesystem::remove(dir / name);
    }
}

// Catches a write error that is lost: at the end of a small document and amid a big one.
TEST(XmlDocument, NoticesAFullDisk) {
    tXmlRmkDocument document;
    document.initNewDoc("r");
    const Fault full("tError_SaveFile", "Can not save the XML document to file '/dev/full'");
    EXPECT_EQ(faultOf([&] { document.saveToFile("/dev/full"); }), full);
    document.newTextChild(document.root(), "t", std::string(1'000'000, 'x'));
    EXPECT_EQ(faultOf([&] { document.saveToFile("/dev/full"); }), full);
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_EQ(faultOf([&] { document.saveToStream(broken); }),
              Fault("tError_SaveFile", "Can not save the XML document to file 'in-memory buffer'"));
}

}  // namespace
}  // namespace zelvo
