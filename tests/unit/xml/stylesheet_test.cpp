#include "xml/stylesheet.h"

#include <gtest/gtest.h>

#include "fault.h"
#include "panel_box.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

class Stylesheet : public testing::Test {
  protected:
    // What a stylesheet with this body of its one template makes of <r>text</r>.
    tXmlDocFromXslt apply(const std::string& body, const std::string& top = "") const {
        test::writeFile(dir_ / "s.xsl",
                        "<xsl:stylesheet version='1.1' "
                        "xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
                            top + "<xsl:template match='/'>" + body +
                            "</xsl:template></xsl:stylesheet>");
        tXsltStylesheet stylesheet;
        stylesheet.readFromFile((dir_ / "s.xsl").c_str());
        tXmlDocument document(std::string("<r>text</r>"));
        return apply_stylesheet(stylesheet, document);
    }
    Fault faultOfApply(const std::string& body) const {
        testing::internal::CaptureStderr();
        const Fault fault = faultOf([&] { apply(body); });
        testing::internal::GetCapturedStderr();
        return fault;
    }

    test::TempDir dir_;
};

// Catches a result that outlives the stylesheet whose rules it is written by, and a save through
// the base class that passes these rules by.
TEST_F(Stylesheet, ResultFollowsTheOutputRules) {
    tXmlDocFromXslt result = apply("[<xsl:value-of select='r'/>]", "<xsl:output method='text'/>");
    tXmlDocument& base = result;
    base.saveToFile((dir_ / "out").string());
    EXPECT_EQ(test::readFile(dir_ / "out"), "[text]");
    base.saveToFileAtomically((dir_ / "target").string());
    EXPECT_EQ(test::readFile(dir_ / "target"), "[text]");
    EXPECT_EQ(faultOf([&] { result.saveToFile("/dev/full"); }).first, "tError_SaveFile");
}

TEST_F(Stylesheet, FailuresAreToldApart) {
    EXPECT_EQ(faultOfApply("<xsl:message terminate='yes'>no</xsl:message>"),
              Fault("tError_Xslt_ApplyStylesheetTerminated",
                    "The translation of XML document was terminated by XSLT stylesheet. Check for "
                    "the error reason and try again."));
    EXPECT_EQ(faultOfApply("<xsl:call-template name='none'/>"),
              Fault("tError_XmlInternal",
                    "Some error while applying stylesheet. Check the error reason and try "
                    "again."));
    EXPECT_EQ(faultOfApply("<xsl:broken"),
              Fault("tError_XslParse_CanNotParseFile",
                    "Can not parse XSLT file '" + (dir_ / "s.xsl").string() + "'"));
    EXPECT_EQ(faultOf([] {
                  tXsltStylesheet empty;
                  tXmlDocument document;
                  apply_stylesheet(empty, document);
              }),
              Fault("AssertionFailed", "Assertion failed: ctxt != NULL"));
}

// Catches a stylesheet of an agent that writes where it likes.
TEST_F(Stylesheet, CannotWriteFiles) {
    const std::string target = (dir_ / "written").string();
    EXPECT_EQ(faultOfApply("<xsl:document href='" + target + "'>x</xsl:document>").first,
              "tError_XmlInternal");
    EXPECT_FALSE(std::filesystem::exists(target));
}

}  // namespace
}  // namespace zelvo
