#include "xml/validation.h"

#include <gtest/gtest.h>

#include "fault.h"
#include "panel_box.h"

namespace zelvo {
namespace {

using test::Fault;
using test::faultOf;

const char* const kSchema =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
    "<xs:element name='r'><xs:complexType><xs:sequence>"
    "<xs:element name='a' type='xs:int' maxOccurs='9'/>"
    "</xs:sequence></xs:complexType></xs:element></xs:schema>";

class Validation : public testing::Test {
  protected:
    // The failure of a check of the document against a file of this content.
    Fault external(const std::string& document, const std::string& dtd) const {
        test::writeFile(dir_ / "d.dtd", dtd);
        return faultOf([&] {
            tXmlDocument given(document);
            tDtdValidator().validateXml(given, (dir_ / "d.dtd").string());
        });
    }
    static Fault internal(const std::string& document) {
        return faultOf([&] {
            tXmlDocument given(document);
            tDtdValidator().validateXml(given);
        });
    }
    Fault schema(const std::string& document, const std::string& xsd) const {
        test::writeFile(dir_ / "s.xsd", xsd);
        return faultOf([&] {
            tXmlDocument given(document);
            validateSchema(given, (dir_ / "s.xsd").string());
        });
    }

    test::TempDir dir_;
};

// Catches diagnostics that are lost, kept whole or told under another code.
TEST_F(Validation, InternalDtd) {
    EXPECT_EQ(internal("<!DOCTYPE r [<!ELEMENT r (a)><!ELEMENT a EMPTY>]><r><a/></r>"), Fault());
    EXPECT_EQ(internal("<!DOCTYPE r [<!ELEMENT r EMPTY>]><r><a/><b/></r>"),
              Fault("InternalDtdValidationFailed",
                    "Failed validation of the document with its internal DTD. The errors are: "
                    "Element r was declared EMPTY this one has content"
                    "No declaration for element a"
                    "No declaration for element b."));
    EXPECT_EQ(internal("<r/>"),
              Fault("InternalDtdValidationFailed",
                    "Failed validation of the document with its internal DTD. The errors are: "
                    "no DTD found!."));
}

TEST_F(Validation, ExternalDtd) {
    EXPECT_EQ(external("<r/>", "<!ELEMENT r EMPTY>"), Fault());
    EXPECT_EQ(
        external("<r>x</r>", "<!ELEMENT r EMPTY>"),
        Fault("ExternalDtdValidationFailed",
              "Failed validation of the document with external DTD " + (dir_ / "d.dtd").string() +
                  ". The errors are: Element r was declared EMPTY this one has content."));
    testing::internal::CaptureStderr();
    EXPECT_EQ(faultOf([] {
                  tXmlDocument document;
                  tDtdValidator().validateXml(document, "/none/such.dtd");
              }),
              Fault("InvalidDtdFile", "The DTD file /none/such.dtd is invalid"));
    testing::internal::GetCapturedStderr();
}

TEST_F(Validation, Schema) {
    EXPECT_EQ(schema("<r><a>1</a></r>", kSchema), Fault());
    EXPECT_EQ(schema("<r><a>x</a><b/></r>", kSchema),
              Fault("InternalDtdValidationFailed",
                    "Failed validation of the document with its internal DTD. The errors are: "
                    "Element 'a': 'x' is not a valid value of the atomic type 'xs:int'."
                    "Element 'b': This element is not expected.."));
}

TEST_F(Validation, BrokenSchemaIsToldAsALackOfMemory) {
    const Fault noMemory("tError_XmlInternal", "Can not allocate memory for xmlSchemaParse");
    testing::internal::CaptureStderr();
    EXPECT_EQ(schema("<r/>", "<xs:schema"), noMemory);
    EXPECT_EQ(faultOf([] {
                  tXmlDocument document(std::string("<r/>"));
                  validateSchema(document, "/none/such.xsd");
              }),
              noMemory);
    testing::internal::GetCapturedStderr();
}

// Catches a schema that is fetched from elsewhere: the process would wait for the network.
TEST_F(Validation, NetworkIsRefused) {
    testing::internal::CaptureStderr();
    schema("<r/>",
           "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
           "<xs:include schemaLocation='http://127.0.0.1:9/x.xsd'/></xs:schema>");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Attempt to load network entity"),
              std::string::npos);
}

}  // namespace
}  // namespace zelvo
