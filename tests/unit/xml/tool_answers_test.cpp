#include "xml/tool_answers.h"

#include <gtest/gtest.h>

#include <boost/lexical_cast.hpp>

#include "fault.h"

namespace zelvo {
namespace {

using boost::bad_lexical_cast;
using test::Fault;
using test::faultOf;

TEST(ToolAnswers, AdminLocation) {
    const auto location =
        getAdminLocation("<admin><country>US</country><zip>01 234</zip><x/></admin>");
    EXPECT_EQ(location->getCountry(), "US");
    EXPECT_EQ(location->getState(), "");
    EXPECT_EQ(location->getZip(), "01 234");
}

struct GateCase {
    const char* text;
    bool isOk;
    const char* error;
    const char* out;
    const char* err;
};

// Catches a missing element that fails, and one that is taken from elsewhere in the answer.
TEST(ToolAnswers, CliGateResponse) {
    const GateCase cases[] = {
        {"<cli><ok/><return>0</return></cli>", true, "", "", ""},
        {"<cli><failure>no &lt;such&gt; tool</failure></cli>", false, "no <such> tool", "", ""},
        {"<cli><ok/><stdout>a\n<![CDATA[<b>]]></stdout><stderr>e</stderr></cli>", true, "",
         "a\n<b>", "e"},
        {"<cli><x><ok/><stdout>deep</stdout></x></cli>", false, "", "", ""},
    };
    for (const GateCase& gate : cases) {
        const auto response = getCliGateResponse(gate.text);
        EXPECT_EQ(response->isOk(), gate.isOk) << gate.text;
        EXPECT_EQ(response->getError(), gate.error) << gate.text;
        EXPECT_EQ(response->getStdout(), gate.out) << gate.text;
        EXPECT_EQ(response->getStderr(), gate.err) << gate.text;
    }
}

TEST(ToolAnswers, CliGateReturn) {
    const auto returned = [](const std::string& text) {
        return getCliGateResponse("<cli><ok/>" + text + "</cli>")->getReturn();
    };
    EXPECT_EQ(returned("<return>-9223372036854775808</return>"), INT64_MIN);
    EXPECT_EQ(returned("<return>255</return>"), 255);
    for (const char* text : {"<return/>", "", "<return> 1</return>", "<return>1x</return>"}) {
        EXPECT_THROW(returned(text), bad_lexical_cast) << text;
    }
}

TEST(ToolAnswers, DatabaseCredentials) {
    const auto known = getDatabaseCredentials(
        "<credentials><username>admin</username><password>p&amp;w</password></credentials>");
    EXPECT_FALSE(known->notConfigured());
    EXPECT_EQ(known->getUsername(), "admin");
    EXPECT_EQ(known->getPassword(), "p&w");
    EXPECT_TRUE(
        getDatabaseCredentials("<credentials><not-configured/></credentials>")->notConfigured());
}

TEST(ToolAnswers, FileList) {
    const auto list = getFileList(
        "<contentlist size='18446744073709551615' unpacked='7'>\n"
        "<file size='4294967296' md5sum='0f'>b.tar</file>\n<other>x</other>"
        "<file>a.tar</file></contentlist>");
    EXPECT_EQ(list->getTotalSize(), UINT64_MAX);
    EXPECT_EQ(list->getUnpackedSize(), 7U);
    ASSERT_EQ(list->getFileList().size(), 2U);
    const DumpFile& first = list->getFileList().front();
    EXPECT_EQ(first.name, "b.tar");
    EXPECT_EQ(first.size, 4294967296);
    EXPECT_EQ(first.md5sum, "0f");
    const DumpFile& second = list->getFileList().back();
    EXPECT_EQ(second.name, "a.tar");
    EXPECT_EQ(second.size, 0);
    EXPECT_EQ(second.md5sum, "");
}

// Catches a bad number that is taken for a missing one.
TEST(ToolAnswers, FileListWithBadSizes) {
    const auto list = getFileList("<contentlist unpacked='many'/>");
    EXPECT_EQ(faultOf([&] { list->getTotalSize(); }),
              Fault("NoSuchAttribute", "Node contentlist does not have attribute size"));
    EXPECT_THROW(list->getUnpackedSize(), bad_lexical_cast);
    EXPECT_THROW(getFileList("<contentlist><file size=''>a</file></contentlist>"),
                 bad_lexical_cast);
}

TEST(ToolAnswers, IpInfo) {
    const auto addresses = getZelvoIpInfo(
        "<ipinfo><ip name='10.0.0.2'><type>exclusive</type><def_domain>d</def_domain></ip>"
        "<ip name='10.0.0.1'><type>shared</type></ip>"
        "<ip name='10.0.0.2'><type>shared</type></ip></ipinfo>");
    ASSERT_EQ(addresses.size(), 2U);
    EXPECT_EQ(addresses.at("10.0.0.1").type, "shared");
    EXPECT_FALSE(addresses.at("10.0.0.2").defaultDomain);
    EXPECT_EQ(addresses.at("10.0.0.2").type, "shared");
    EXPECT_TRUE(getZelvoIpInfo("<ipinfo/>").empty());
    EXPECT_TRUE(getZelvoIpInfo("<ipinfo><ip name='1'><type/><def_domain/></ip></ipinfo>")
                    .at("1")
                    .defaultDomain);
    EXPECT_EQ(faultOf([] { getZelvoIpInfo("<ipinfo><ip name='1'/></ipinfo>"); }).second,
              "The XML document is invalid for XPath exception.\n"
              "Can not evaluate result of expression 'type at path '/ipinfo/ip''");
}

// Catches an answer of another tool, or none, that is read as an empty one.
TEST(ToolAnswers, OtherDocumentsAreRefused) {
    EXPECT_EQ(faultOf([] { getCliGateResponse("<html/>"); }),
              Fault("tError_WrongDoc",
                    "The document has the wrong type, root node is <html>, but <cli> was "
                    "expected"));
    EXPECT_EQ(faultOf([] { getAdminLocation("<cli/>"); }).first, "tError_WrongDoc");
    EXPECT_EQ(faultOf([] { getDatabaseCredentials("<cli/>"); }).first, "tError_WrongDoc");
    EXPECT_EQ(faultOf([] { getFileList("<cli/>"); }).first, "tError_WrongDoc");
    EXPECT_EQ(faultOf([] { getZelvoIpInfo("<cli/>"); }).first, "tError_WrongDoc");
    EXPECT_EQ(faultOf([] { getFileList(""); }).first, "AssertionFailed");
    EXPECT_EQ(faultOf([] { getFileList("PHP Warning"); }).first, "tError_ParseFile");
}

}  // namespace
}  // namespace zelvo
