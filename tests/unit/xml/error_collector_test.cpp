#include "xml/error_collector.h"

#include <gtest/gtest.h>
#include <libxml/xmlerror.h>

#include "fault.h"
#include "xml/xml_document.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

// Catches a handler that keeps the last character, or that reads garbage for a short piece.
TEST(ErrorCollector, EachPieceLosesItsLastCharacter) {
    std::string text;
    libxmlErrorHandler(&text, "%s", "");
    EXPECT_EQ(text, "");
    libxmlErrorHandler(&text, "%s", "x");
    EXPECT_EQ(text, "");
    libxmlErrorHandler(&text, "%s:%d: ", "f.xml", 12);
    libxmlErrorHandler(&text, "bad\n");
    EXPECT_EQ(text, "f.xml:12:bad");
    const std::string line(5000, 'y');
    libxmlErrorHandler(&text, "%s\n", line.c_str());
    EXPECT_EQ(text, "f.xml:12:bad" + line);
}

// Catches a text that is put together otherwise than libxml2 delivers it.
TEST(ErrorCollector, GivesTheTextOfAFailedParse) {
    EXPECT_EQ(faultOf([] { tXmlDocument(std::string("<a>\n<b></a>")); }),
              Fault("tError_ParseFile",
                    "The XML file - was not parsed successfully with the following errors:\n"
                    "Entity: line 2:parsererror :"
                    "Opening and ending tag mismatch: b line 2 and a"
                    "<b></a>       ^"
                    "Entity: line 2:parsererror :"
                    "Premature end of data in tag a line 1"
                    "<b></a>       ^"));
}

// Catches a handler that stays registered with a string that has died.
TEST(ErrorCollector, IsUnregisteredAfterAFailedParse) {
    const xmlGenericErrorFunc before = xmlGenericError;
    faultOf([] { tXmlDocument(std::string("<a")); });
    EXPECT_EQ(xmlGenericError, before);
    EXPECT_EQ(xmlGenericErrorContext, nullptr);
}

}  // namespace
}  // namespace zelvo
