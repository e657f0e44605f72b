// Documents that want something of the reader.
#include <gtest/gtest.h>

#include <sstream>

#include "fault.h"
#include "panel_box.h"
#include "xml/xml_document.h"
#include "xml/xml_node.h"

namespace zelvo {
namespace {

using test::faultOf;

std::string wholeText(const tXmlDocument& document) {
    return XmlNode(document.doc(), nullptr).str("/");
}

std::string savedText(tXmlDocument& document) {
    std::ostringstream stream;
    document.saveToStream(stream);
    return stream.str();
}

// A document whose text doubles with each of the levels.
std::string laughs(int levels) {
    std::ostringstream text;
    text << "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
    for (int level = 1; level <= levels; ++level) {
        text << "<!ENTITY e" << level << " \"&e" << level - 1 << ";&e" << level - 1 << ";\">";
    }
    text << "]><a>&e" << levels << ";</a>";
    return text.str();
}

// Catches limits that have been lifted: the text would have two billion characters.
TEST(HostileXml, EntitiesDoNotExpandWithoutBound) {
    const auto [code, message] = faultOf([] { tXmlDocument(laughs(30)); });
    EXPECT_EQ(code, "tError_ParseFile");
    EXPECT_NE(message.find("entity reference loop"), std::string::npos) << message;
}

// Catches the same at the moment at which the text is asked for, behind a parse that went through.
TEST(HostileXml, QueriesOfNestedEntitiesStaySmall) {
    for (int levels = 1; levels < 30; ++levels) {
        try {
            const tXmlDocument document(laughs(levels));
            EXPECT_LT(wholeText(document).size(), 20'000'000U) << levels;
        } catch (const ExTraceable&) {
            EXPECT_GT(levels, 1);
        }
    }
}

// Catches a file of this machine that is carried off into the panel or into a saved document.
TEST(HostileXml, ExternalEntitiesAreNotRead) {
    const test::TempDir dir;
    test::writeFile(dir / "secret", "hush");
    tXmlDocument document("<!DOCTYPE a [<!ENTITY x SYSTEM \"file://" + (dir / "secret").string() +
                          "\">]><a>[&x;]</a>");
    EXPECT_EQ(wholeText(document), "[]");
    EXPECT_EQ(savedText(document).find("hush"), std::string::npos);
}

// Catches a reader that takes defaults and entities from a DTD that the document names.
TEST(HostileXml, ExternalSubsetIsNotRead) {
    const test::TempDir dir;
    test::writeFile(dir / "a.dtd", "<!ATTLIST a more CDATA \"from-dtd\">");
    const tXmlDocument document("<!DOCTYPE a SYSTEM \"" + (dir / "a.dtd").string() + "\"><a/>");
    EXPECT_EQ(XmlNode(document.doc(), nullptr).str("/a/@more"), "");
}

struct Refused {
    const char* name;
    std::string text;
    const char* reason;
};

std::string nested(int depth) {
    std::string text;
    for (int level = 0; level < depth; ++level) {
        text += "<a>";
    }
    for (int level = 0; level < depth; ++level) {
        text += "</a>";
    }
    return text;
}

// Catches options that make the parser go on behind an error, or without limits.
TEST(HostileXml, BrokenDocumentsAreRefused) {
    const Refused cases[] = {
        {"depth", nested(300), "Excessive depth"},
        {"stray byte", "<a>\xE9</a>", "not proper UTF-8"},
        {"other encoding", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>", ""},
        {"unknown encoding", "<?xml version=\"1.0\" encoding=\"none-such\"?><a/>", "encoding"},
        {"control character", "<a>\x01</a>", "invalid Char value 1"},
        {"zero byte", std::string("<a>\0</a>", 8), ""},
        {"two roots", "<a/><a/>", "Extra content"},
        {"no root", " ", ""},
    };
    for (const Refused& refused : cases) {
        const auto [code, message] = faultOf([&] { tXmlDocument document(refused.text); });
        EXPECT_EQ(code, "tError_ParseFile") << refused.name;
        EXPECT_NE(message.find(refused.reason), std::string::npos) << message;
    }
    EXPECT_EQ(faultOf([] { tXmlDocument document(nested(250)); }).first, "");
}

// Catches a declared encoding that is not undone.
TEST(HostileXml, DeclaredEncodingIsReadAsUtf8) {
    const tXmlDocument document(
        std::string("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE9</a>"));
    EXPECT_EQ(wholeText(document), "\xC3\xA9");
}

}  // namespace
}  // namespace zelvo
