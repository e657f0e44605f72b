#include "content/cid.h"

#include <gmock/gmock.h>

#include "../exec/recording_log.h"
#include "commons/errors.h"
#include "xml/xml_document.h"

using namespace zelvo;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const kDomain = R"(<domain><content>
<cid type="vhost" path="a/b"><content-file>v1</content-file><content-file>v2</content-file></cid>
<cid type="docroot" path="a/b" referrer="false" offset="httpdocs"
  ><content-file>v1</content-file><content-file>v2</content-file></cid>
<cid type="cgi" path="a/b" referrer="true"
  ><content-file>v1</content-file><content-file>v2</content-file></cid>
<cid type="logs" path="a/b" referrer="true" offset="logs"><content-file>v1</content-file></cid>
<cid type="conf" path="a/c" referrer="true" offset="conf"
  ><content-file>v1</content-file><content-file>v2</content-file></cid>
<cid type="icon" path="first"><other>x</other></cid>
<cid type="icon" path="second"/>
</content></domain>)";

class CidTest : public testing::Test {
  protected:
    XmlNode node(const char* expr) const {
        return tXPathExpr(document_.doc(), expr, nullptr).getXmlNode();
    }

    const tXmlDocument document_{std::string(kDomain)};
    const XmlNode domain_{node("/domain")};
    RecordingLog log_;
};

// A type that refuses what it reads.
class ChoosyCid : public Cid {
  protected:
    bool isTypeSupported(const std::string& cidType) const override { return cidType == "cgi"; }
};

}  // namespace

TEST_F(CidTest, IsReadByTypeAndEmptyWithoutOne) {
    Cid cid(domain_, "vhost");
    EXPECT_EQ(cid.str(), "a/b[vhost]: v1,v2,");
    cid.loadCidType(domain_, "icon");
    EXPECT_EQ(cid.str(), "first[icon]: ") << "the first of its type counts";
    cid.loadCidType(domain_, "vhos");
    EXPECT_EQ(cid.str(), "[]: ");
}

TEST_F(CidTest, RefusesAPartOfAWholeAndAnUnknownType) {
    try {
        const Cid cid(node("//cid[@type='logs']"));
        ADD_FAILURE() << "nothing was raised";
    } catch (const Exc<&NotSupportedOperation>& failure) {
        EXPECT_STREQ(failure.what(),
                     "The operation is not supported: This cid cannot be referrer:v1");
    }
    ChoosyCid choosy;
    choosy.loadCidType(domain_, "cgi");
    try {
        choosy.load(node("//cid[@type='vhost']"));
        ADD_FAILURE() << "nothing was raised";
    } catch (const Exc<&NotSupportedOperation>& failure) {
        EXPECT_STREQ(failure.what(),
                     "The operation is not supported: This class does not allow this type: v1v2");
    }
    EXPECT_THAT(choosy.files, IsEmpty());
}

TEST_F(CidTest, ComparesPathAndFilesOnly) {
    const Cid vhost(domain_, "vhost");
    EXPECT_TRUE(vhost == Cid(domain_, "cgi"));
    EXPECT_FALSE(vhost == Cid(domain_, "conf")) << "another path";
    EXPECT_FALSE(vhost == Cid(domain_, "logs")) << "other files";
}

TEST_F(CidTest, ReadsItsPlaceInAWhole) {
    RefferredCid cid(domain_, "docroot");
    EXPECT_TRUE(cid.referred) << "whatever the attribute says";
    EXPECT_EQ(cid.offset, "httpdocs");
    cid.loadCidType(domain_, "cgi");
    EXPECT_TRUE(cid.referred);
    EXPECT_EQ(cid.offset, "");
    cid.loadCidType(domain_, "vhost");
    EXPECT_FALSE(cid.referred);
    EXPECT_THAT(log_.lines,
                ElementsAre("a/b[docroot]: v1,v2,Load reffered cid with offset 'httpdocs'",
                            "a/b[cgi]: v1,v2,Load reffered cid with offset ''",
                            "Load unreffered cid a/b[vhost]: v1,v2,"));
}

TEST_F(CidTest, WholeTakesOnlyItsOwnParts) {
    WholeContentCid whole(domain_, "vhost");
    RefferredCid docroot(domain_, "docroot");
    RefferredCid cgi(domain_, "cgi");
    RefferredCid logs(domain_, "logs");
    RefferredCid conf(domain_, "conf");
    RefferredCid untyped = docroot;
    untyped.type.clear();
    RefferredCid none;
    log_.lines.clear();
    for (RefferredCid* cid : {&cgi, &logs, &conf, &untyped, &none, &docroot}) {
        whole.addReferredCid(cid);
    }
    whole.addReferredCid(nullptr);
    EXPECT_THAT(log_.lines, ElementsAre("Add reffrered cid 'a/b[cgi]: v1,v2,' to whole content "
                                        "'a/b[vhost]: v1,v2,'",
                                        "Add reffrered cid 'a/b[docroot]: v1,v2,' to whole content "
                                        "'a/b[vhost]: v1,v2,'"));
    EXPECT_THAT(whole.getIncludes(), ElementsAre("httpdocs"));
    WholeContentCid empty;
    empty.addReferredCid(&none);
    EXPECT_THAT(empty.getIncludes(), IsEmpty()) << "no files are no content";
}
