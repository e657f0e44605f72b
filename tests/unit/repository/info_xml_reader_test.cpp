#include "repository/info_xml_reader.h"

#include <sys/stat.h>

#include "repository_rig.h"

namespace zelvo {
namespace {

const char kDump[] =
    "<!DOCTYPE d [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><admin guid='G-1'>"
    "<description>a &amp; <b>b</b></description><content>"
    "<cid path='p'><content-file>1&amp;<!--x-->a<![CDATA[ ]]> <y>b</y></content-file><x>no</x>"
    "<content-file/><content-file>2</content-file></cid><cid path='q'/></content></admin>";

class InfoXmlReader : public RepositoryRig {
  protected:
    tInfoXmlReader reader(const std::string& content) {
        dir_.write("r/info.xml", content);
        return {&repository_.transport(), "info.xml"};
    }
    std::size_t toolRuns() const {
        return contentOf(dir_.path("q/admin/sbin/backup_sign.runs")).size() / 2;
    }
};

TEST_F(InfoXmlReader, ReadsWhatTheRepositoryNeeds) {
    tInfoXmlReader dump = reader(kDump);
    dump.ReadObject();
    EXPECT_EQ("server G-1", dump.object_type() + " " + dump.object_guid());
    EXPECT_EQ("a &amp; <b>b</b>", dump.ReadDescription());
    const auto content = dump.ReadContent();
    ASSERT_EQ(2U, content.size());
    EXPECT_EQ("p q", content[0].path + " " + content[1].path);
    EXPECT_EQ((std::vector<std::string>{"1&a  b", "2"}), content[0].files);
    EXPECT_EQ("", reader("<x/>").ReadDescription());
}

// Catches: half a document that is taken for a whole one with less content, and the words of
// another file in a description.
TEST_F(InfoXmlReader, RefusesWhatIsNoDocument) {
    const std::string file = dir_.path("r/info.xml");
    EXPECT_EQ("unable to read file " + file,
              messageOf([&] { reader("<admin><cid path='p'>").ReadContent(); }));
    EXPECT_EQ("unable to read file " + file,
              messageOf([&] { reader("<admin><description>a").ReadDescription(); }));
    EXPECT_EQ("unable to open file " + file + "x", messageOf([&] { IsSigned(file + "x"); }));
    ASSERT_EQ(0, mkfifo(dir_.path("r/pipe").c_str(), 0600));
    EXPECT_EQ("unable to open file " + dir_.path("r/pipe"),
              messageOf([&] { tInfoXmlReader(&repository_.transport(), "pipe").ReadContent(); }));
    const std::string outside = "<!DOCTYPE d [<!ENTITY e SYSTEM '" + dir_.write("e", "secret") +
                                "'>]><admin><description>&e;</description></admin>";
    EXPECT_EQ("&e;", reader(outside).ReadDescription());
    // A restore would take other files than these.
    const std::string entity = "<!DOCTYPE d [<!ENTITY e '<cid/>'>]><admin>";
    for (const char* content :
         {"<cid><content-file>a&e;</content-file></cid>", "<cid>&e;</cid>", "&e;"}) {
        EXPECT_EQ("entity 'e' in an info document",
                  messageOf([&] { reader(entity + content + "</admin>").ReadContent(); }));
    }
}

TEST_F(InfoXmlReader, SignsAndChecksAndLeavesNothing) {
    {
        tInfoXmlReader dump = reader("<admin>\n</admin>\n");
        dump.Sign();
        dump.Sign();
        EXPECT_EQ(1U, toolRuns());
        EXPECT_TRUE(IsSigned(dump.GetLocalPath()));
        EXPECT_TRUE(dump.ValidateZelvoXsd());
        EXPECT_FALSE(IsSigned(dump.GetLocalPath()));
        EXPECT_TRUE(dump.ValidateSign());
        EXPECT_EQ(2U, toolRuns());
        dump.ClearTempFiles();
        EXPECT_FALSE(leavesTempFiles());
        EXPECT_EQ(dir_.path("r/info.xml"), dump.GetLocalPath());
        dump.Sign();
        EXPECT_TRUE(leavesTempFiles());
    }
    EXPECT_FALSE(leavesTempFiles());
    log_.lines.clear();
    EXPECT_FALSE(reader("<other/>").ValidateZelvoXsd());
    EXPECT_EQ(0U, log_.lines.back().find("Xml validation error: Element 'other': "));
    EXPECT_FALSE(reader("<Envelope><bad/></Envelope>").ValidateZelvoXsd());
    EXPECT_TRUE(IsSigned(reader("<x:Envelope xmlns:x='u'/>").GetLocalPath()));
    // A document holds passwords, and a tool may print it before it fails.
    const std::string told = messageOf([&] { reader("<bad/>").Sign(); }) + log_.lines.back();
    EXPECT_NE(std::string::npos, told.find(" failed with return code 3"));
    EXPECT_EQ(std::string::npos, told.find("<bad/>"));
    dir_.write("q/RMK/zelvo.xsd", "<x/>");
    for (const char* script : {"#!/bin/sh\n", "#!/bin/sh\ncat $2\n"}) {
        dir_.write("q/admin/sbin/backup_sign", script);
        EXPECT_EQ("the signing tool has not signed the document",
                  messageOf([&] { reader("<admin/>").Sign(); }));
    }
    for (const char* document : {"<admin/>", "<admin>", "<Envelope><bad/></Envelope>"}) {
        EXPECT_EQ("failed to parse xml schema",
                  messageOf([&] { reader(document).ValidateZelvoXsd(); }));
    }
}

}  // namespace
}  // namespace zelvo
