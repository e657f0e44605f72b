#include "content/cid.h"

#include <gmock/gmock.h>

#include "commons/errors.h"
#include "recording_log.h"
#include "xml/xml_document.h"

using namespace zelvo;

namespace {

const char* const kDomain = R"(<domain><content>
<cid type="vhost" path="a/b"><content-file>v1</content-file></cid>
<cid type="docroot" path="a/b" referrer="false" offset="doc"><content-file>v1</content-file></cid>
<cid type="cgi" path="a/b" referrer="true"><content-file>v1</content-file></cid>
<cid type="logs" path="a/b" referrer="true" offset="logs"><content-file>v2</content-file></cid>
<cid type="conf" path="a/c" referrer="true" offset="conf"><content-file>v1</content-file></cid>
<cid type="icon" path="d"><content-file>2</content-file><x>0</x><content-file>1</content-file></cid>
<cid type="icon" path="second"/>
<cid type="bare" path="" referrer="true" offset="bare"/>
</content></domain>)";

class CidTest : public testing::Test {
  protected:
    const tXmlDocument document_{std::string(kDomain)};
    const XmlNode domain_ = tXPathExpr(document_.doc(), "/domain", nullptr).getXmlNode();
    RecordingLog log_;
};

}  // namespace

TEST_F(CidTest, IsTheFirstOfItsTypeOrEmptyAndNoPartOfAWhole) {
    Cid cid(domain_, "vhost");
    cid.loadCidType(domain_, "icon");
    EXPECT_EQ(cid.str(), "d[icon]: 2,1,");
    cid.loadCidType(domain_, "ico");
    EXPECT_EQ(cid.str(), "[]: ");
    EXPECT_THAT([&] { Cid(domain_.getNode("content/cid[@type='logs']")); },
                testing::ThrowsMessage<Exc<&NotSupportedOperation>>(
                    "The operation is not supported: This cid cannot be referrer:v2"));
}

TEST_F(CidTest, WholeTakesThoseOfItsPathAndFiles) {
    std::vector<RefferredCid> cids;
    for (const char* type : {"cgi", "logs", "conf", "bare", "docroot", "docroot"}) {
        cids.emplace_back(domain_, type);
        EXPECT_TRUE(cids.back().referred) << "whatever the attribute says";
    }
    RefferredCid& untyped = cids.back();
    untyped.loadCidType(domain_, "vhost");
    EXPECT_EQ(untyped.offset, "");
    EXPECT_FALSE(untyped.referred);
    untyped.type.clear();
    EXPECT_THAT(log_.lines,
                testing::IsSupersetOf({"a/b[docroot]: v1,Load reffered cid with offset 'doc'",
                                       "a/b[cgi]: v1,Load reffered cid with offset ''",
                                       "Load unreffered cid a/b[vhost]: v1,"}));
    log_.lines.clear();
    WholeContentCid whole(domain_, "vhost");
    WholeContentCid empty;
    for (RefferredCid& cid : cids) {
        whole.addReferredCid(&cid);
        empty.addReferredCid(&cid);
    }
    whole.addReferredCid(nullptr);
    const std::string end = "]: v1,' to whole content 'a/b[vhost]: v1,'";
    EXPECT_THAT(log_.lines, testing::ElementsAre("Add reffrered cid 'a/b[cgi" + end,
                                                 "Add reffrered cid 'a/b[docroot" + end));
    EXPECT_THAT(whole.getIncludes(), testing::ElementsAre("doc"));
}
