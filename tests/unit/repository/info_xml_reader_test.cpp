#include "repository/info_xml_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "lib/read_configuration.h"
#include "recording_log.h"
#include "temp_dir.h"
#include "told.h"

namespace zelvo {
namespace {

const char kDump[] =
    "<!DOCTYPE d [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><admin guid='G-1'>"
    "<description>a &amp; <b>b</b></description><content>"
    "<cid path='p'><content-file>1</content-file><x>no</x><content-file/>"
    "<content-file>2</content-file></cid><cid path='q'/></content></admin>";

// Signs by an envelope, and finds a good signature in what holds no "bad".
const char kSignTool[] =
    "#!/bin/sh\necho x >> \"$0.runs\"\n"
    "grep -q bad \"$2\" && { cat \"$2\"; exit 3; }\n"
    "if [ $1 = sign ]; then echo '<Envelope>'; cat \"$2\"; echo '</Envelope>'\n"
    "else grep -v Envelope \"$2\"; fi\n";

const char kSchema[] =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='admin'/></xs:schema>";

class InfoXmlReader : public testing::Test {
  protected:
    InfoXmlReader() {
        theQrdConfHash = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
        for (const char* dir : {"q/admin/sbin", "q/RMK", "tmp"}) {
            std::filesystem::create_directories(dir_.path(dir));
        }
        conf_set_r("PRODUCT_ROOT_D", dir_.path("q").c_str(), theQrdConfHash);
        conf_set_r("DUMP_TMP_D", dir_.path("tmp").c_str(), theQrdConfHash);
        std::filesystem::permissions(dir_.write("q/admin/sbin/backup_sign", kSignTool),
                                     std::filesystem::perms::owner_all);
        dir_.write("q/RMK/zelvo.xsd", kSchema);
    }
    ~InfoXmlReader() override {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
    }

    tInfoXmlReader reader(const std::string& content) {
        dir_.write("info.xml", content);
        return {transport_.get(), "info.xml"};
    }
    bool leavesTempFiles() const { return !std::filesystem::is_empty(dir_.path("tmp")); }
    int toolRuns() const {
        return static_cast<int>(contentOf(dir_.path("q/admin/sbin/backup_sign.runs")).size() / 2);
    }

    const TempDir dir_;
    RecordingLog log_;
    std::unique_ptr<tRepositoryTransport> transport_ = tRepositoryTransport::Get(dir_.path(""));
};

TEST_F(InfoXmlReader, ReadsWhatTheRepositoryNeeds) {
    tInfoXmlReader dump = reader(kDump);
    dump.ReadObject();
    EXPECT_EQ("server G-1", dump.object_type() + " " + dump.object_guid());
    EXPECT_EQ("a &amp; <b>b</b>", dump.ReadDescription());
    const auto content = dump.ReadContent();
    ASSERT_EQ(2U, content.size());
    EXPECT_EQ("p q", content[0].path + " " + content[1].path);
    EXPECT_EQ((std::vector<std::string>{"1", "2"}), content[0].files);
    EXPECT_EQ("", reader("<x/>").ReadDescription());
}

// Catches: half a document that is taken for a whole one with less content, and the words of
// another file in a description.
TEST_F(InfoXmlReader, RefusesWhatIsNoDocument) {
    const std::string file = dir_.path("info.xml");
    EXPECT_EQ("unable to read file " + file,
              messageOf([&] { reader("<admin><cid path='p'>").ReadContent(); }));
    EXPECT_EQ("unable to read file " + file,
              messageOf([&] { reader("<admin><description>a").ReadDescription(); }));
    EXPECT_EQ("unable to open file " + file + "x", messageOf([&] { IsSigned(file + "x"); }));
    const std::string outside = "<!DOCTYPE d [<!ENTITY e SYSTEM '" + dir_.write("e", "secret") +
                                "'>]><admin><description>&e;</description></admin>";
    EXPECT_EQ("&e;", reader(outside).ReadDescription());
}

TEST_F(InfoXmlReader, SignsAndChecksAndLeavesNothing) {
    {
        tInfoXmlReader dump = reader("<admin>\n</admin>\n");
        dump.Sign();
        dump.Sign();
        EXPECT_EQ(1, toolRuns());
        EXPECT_TRUE(IsSigned(dump.GetLocalPath()));
        EXPECT_TRUE(dump.ValidateZelvoXsd());
        EXPECT_FALSE(IsSigned(dump.GetLocalPath()));
        EXPECT_TRUE(dump.ValidateSign());
        EXPECT_EQ(2, toolRuns());
        dump.ClearTempFiles();
        EXPECT_FALSE(leavesTempFiles());
        EXPECT_EQ(dir_.path("info.xml"), dump.GetLocalPath());
        dump.Sign();
        EXPECT_TRUE(leavesTempFiles());
    }
    EXPECT_FALSE(leavesTempFiles());
    log_.lines.clear();
    EXPECT_FALSE(reader("<other/>").ValidateZelvoXsd());
    EXPECT_EQ(0U, log_.lines.back().find("Xml validation error: Element 'other': "));
    EXPECT_FALSE(reader("<Envelope><bad/></Envelope>").ValidateZelvoXsd());
    // A document holds passwords, and a tool may print it before it fails.
    const std::string told = messageOf([&] { reader("<bad/>").Sign(); }) + log_.lines.back();
    EXPECT_NE(std::string::npos, told.find(" failed with return code 3"));
    EXPECT_EQ(std::string::npos, told.find("<bad/>"));
    dir_.write("q/RMK/zelvo.xsd", "<x/>");
    EXPECT_EQ("failed to parse xml schema",
              messageOf([&] { reader("<admin/>").ValidateZelvoXsd(); }));
}

}  // namespace
}  // namespace zelvo
