#include <sys/stat.h>

#include "repository/archive_formats.h"
#include "repository/discovered_items.h"
#include "repository/dump_search.h"
#include "repository/object_types.h"
#include "repository_rig.h"

namespace zelvo {
namespace {

using Store = RepositoryRig;

TEST_F(Store, BringsFilesThereAndBack) {
    const std::string content(3 * 10240, 'x');
    repository_.Put(dir_.write("in", content), "/a/b/file");
    tRepository local("local:" + dir_.path("r/"), "", "", "", false);
    local.Get("a/b/file", dir_.path("out"));
    EXPECT_EQ(content, contentOf(dir_.path("out")));
    repository_.Put(dir_.write("in", ""), "a/b/file");
    EXPECT_EQ("", contentOf(dir_.path("r/a/b/file")));
    repository_.PutInfo("info", "text\n");
    EXPECT_EQ("text\n", repository_.GetInfo("info"));
    EXPECT_EQ("a/b/file info ", files());
}

// Catches: a disk that was full in the last block and is told as success, and half a file left
// where a whole one is looked for.
TEST_F(Store, TellsWhatDidNotGetThere) {
    std::filesystem::create_symlink("/dev/full", dir_.path("r/full"));
    const std::string in = dir_.write("in", "small");
    EXPECT_EQ("Unable to copy streams: " + in +
                  " to full:\nunable to write file full: No space left on device",
              messageOf([&] { repository_.Put(in, "full"); }));
    EXPECT_NE("", messageOf([&] { repository_.PutInfo("full", "small"); }));
    EXPECT_NE("", messageOf([&] { repository_.Get("full", dir_.path("r/full")); }));
    EXPECT_TRUE(std::filesystem::is_symlink(dir_.path("r/full")));
    std::istringstream source("small");
    EXPECT_THROW(repository_.transport().PutFile(source, "full"),
                 Exc<&tRepositoryTransport::StreamError>);
    tRepositoryTransport& transport = repository_.transport();
    EXPECT_EQ("unable to read file .: Is a directory", messageOf([&] { transport.GetFile("."); }));
    mkfifo(dir_.path("r/pipe").c_str(), 0600);
    EXPECT_EQ("unable to write file pipe: No such device or address",
              messageOf([&] { transport.PutFile("pipe"); }));
    *transport.PutFile("half") << "content";
    EXPECT_FALSE(transport.IsExist("half"));
    transport.PutFile("whole")->close();
    *transport.PutFile("whole") << "content";
    EXPECT_TRUE(transport.IsExist("whole"));
    EXPECT_EQ("Stream error: Unable to open " + dir_.path("r/pipe") + ": not a regular file",
              messageOf([&] { repository_.Put(dir_.path("r/pipe"), "other"); }));
    EXPECT_EQ("Stream error: Unable to open none", messageOf([&] { repository_.GetInfo("none"); }));
}

// Catches: a rollback that removes what was there before, or leaves half a file.
TEST_F(Store, UndoesWhatItMadeAndNothingElse) {
    const std::string in = dir_.write("in", "x");
    repository_.Put(in, "old/file");
    repository_.BeginTransaction();
    repository_.Put(in, "old/file");
    repository_.CreateDir("old");
    repository_.CreateDir("new");
    repository_.Put(in, "new/file");
    EXPECT_THROW(repository_.Put("/proc/self/mem", "half"), Exc<&tRepository::StreamPipeError>);
    repository_.Put(in, "old/sub/deep/file");
    repository_.Put(in, "old/sub/file");
    EXPECT_EQ("new/file old/file old/sub/deep/file old/sub/file ", files());
    EXPECT_EQ("Transaction error: transaction already started",
              messageOf([&] { repository_.BeginTransaction(); }));
    repository_.AddFilesToTransaction("none", {"a", "b/"});
    repository_.CreateDir("new/below");
    dir_.write("r/new/of another", "");
    repository_.RollbackTransaction();
    EXPECT_EQ("new/of another old/file ", files());
    repository_.Put(in, "later");
    EXPECT_EQ("Transaction error: transaction not started",
              messageOf([&] { repository_.RollbackTransaction(); }));
    EXPECT_EQ("later new/of another old/file ", files());
}

TEST_F(Store, KeepsAnIndex) {
    std::filesystem::create_directories(dir_.path("r/c"));
    repository_.CreateDiscovered("c", "p_info_1203011530", 12, "o", "server", "G-1", "7");
    repository_.SetDiscoveredItem("c/p_info_1203011530.xml", D_ITEM_STATUS, "OK");
    repository_.SetDiscoveredItem("c/p_info_1203011530.xml", D_ITEM_STATUS, "OK");
    repository_.SetDiscoveredItem("c/p_info_1203011530.xml", D_ITEM_STATUS, "A_B");
    Paths status = repository_.GetDiscoveredItems("c/p_info_1203011530.xml", D_ITEM_STATUS);
    std::sort(status.begin(), status.end());
    EXPECT_EQ((Paths{"A_B", "OK"}), status);
    EXPECT_EQ((Paths{"7"}), tRepository::GetDiscoveredNames(repository_.transport(), "G-1"));
    EXPECT_EQ(Paths{}, tRepository::GetDiscoveredNames(repository_.transport(), "G"));
    const std::string items = "c/.discovered/p_info_1203011530/";
    EXPECT_EQ(sorted(".discovered/G-1_7 " + items + "GUID_G-1 " + items + "objectid_7 " + items +
                     "owner_o " + items + "ownertype_server " + items + "size_12 " + items +
                     "status_A_B " + items + "status_OK"),
              files());
    repository_.CreateRepositoryIndexFromImported(
        {items + "GUID_G-2", items + "objectid_8", "d/.discovered/x/GUID_G-3"});
    EXPECT_EQ((Paths{"8"}), tRepository::GetDiscoveredNames(repository_.transport(), "G-2"));
    EXPECT_EQ("7", GetObjectId({"x", items + "objectid_7"}));
    EXPECT_NO_THROW(CheckObjectGuid({items + "owner_G-1"}, "G-1"));
    EXPECT_THROW(CheckObjectGuid({items + "owner_G-1", "GUID_G"}, "G"), ImportException);
}

// Catches: a name out of a dump that reaches another place, and a search that takes what belongs to
// another dump.
TEST_F(Store, StaysInItsPlace) {
    const auto chroot = tRepositoryTransport::Chroot(repository_.transport(), "/sub/");
    chroot->PutFile("/a/p_x_1203011530.tgz")->close();
    chroot->PutFile("/a/.discovered")->close();
    for (const char* name : {"p_info_1203011530.xml", "q_info_1203011530.xml", "p_y_1203011530.log",
                             "p_x_1203011531.tgz", ".discovered/p_info_1203011530/GUID_1"}) {
        chroot->PutFile(name)->close();
    }
    DumpFiles found;
    FindInfoXmlAndDiscovered(*chroot, "", "1203011530", "p", true, found);
    std::sort(found.files.begin(), found.files.end());
    EXPECT_EQ((Paths{"a/p_x_1203011530.tgz", "p_info_1203011530.xml"}), found.files);
    EXPECT_EQ((Paths{".discovered/p_info_1203011530"}), found.discovered);
    EXPECT_TRUE(HasInfoXml(*chroot, "", "1203011530", "q", false));
    EXPECT_FALSE(HasInfoXml(*chroot, "", "1203011531", "p", true));

    for (const char* path : {"..", "a/../../x", "\\../x", "a\nb", "a\rb"}) {
        EXPECT_THROW(relativePath(path), TransportException) << path;
        EXPECT_THROW(chroot->Delete(path), TransportException) << path;
    }
    for (const char* path : {"", "/", ".", "./"}) {
        EXPECT_THROW(chroot->DeleteDir(path), TransportException) << path;
        EXPECT_THROW(chroot->Delete(path), TransportException) << path;
    }
    std::filesystem::create_directories(dir_.path("r/sub/empty"));
    EXPECT_EQ("Unable to delete file sub/empty: Is a directory",
              messageOf([&] { chroot->Delete("empty"); }));
    for (const char* link : {"link", "link/", "link/./", "link/."}) {
        std::filesystem::create_symlink("a", dir_.path("r/sub/link"));
        chroot->DeleteDir(link);
        EXPECT_FALSE(std::filesystem::is_symlink(dir_.path("r/sub/link"))) << link;
    }
    EXPECT_TRUE(chroot->IsExist("a/p_x_1203011530.tgz"));
    for (const char* value : {"", "../x", "a/b", "a\nb"}) {
        EXPECT_THROW(repository_.SetDiscoveredItem("", "n", "item", value), RepositoryException);
    }
}

TEST_F(Store, KnowsAnArchiveByItsFirstBytes) {
    const std::string tar = std::string(0x101, '\0') + "ustar";
    EXPECT_FALSE(IsGzipped(dir_.write("tar", tar)));
    EXPECT_TRUE(IsGzipped(dir_.write("gz", "\x1f\x8b" + tar)));
    for (const std::string& content : {std::string(), std::string("PK"), tar.substr(0, 261)}) {
        EXPECT_EQ("File has wrong format",
                  messageOf([&] { IsGzipped(dir_.write("other", content)); }));
    }
    std::ifstream zip(dir_.write("zip", "PK"));
    EXPECT_TRUE(!HasTarFormat(zip) && HasZipFormat(zip) && !HasGzipFormat(zip));
}

TEST(ObjectTypes, HaveLevels) {
    EXPECT_TRUE(HasMinorType("domain", "client"));
    EXPECT_TRUE(HasMinorType("client", "client"));
    EXPECT_FALSE(HasMinorType("server", "client"));
    EXPECT_FALSE(HasMinorType("x", "client"));
    EXPECT_EQ((Paths{"resellers", "clients"}), GetObjectTypeSearchDirs("reseller"));
    EXPECT_EQ("unexpected object type 'x'", messageOf([] { GetObjectTypeGroupDir("x"); }));
}

}  // namespace
}  // namespace zelvo
