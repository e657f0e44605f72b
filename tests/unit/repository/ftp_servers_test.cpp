// The transport with servers as customers run them.
#include <gmock/gmock.h>

#include "ftp_rig.h"
#include "ftp_server.h"
#include "repository/dump_search.h"
#include "repository/repository.h"
#include "told.h"

namespace zelvo {
namespace {

struct Setting {
    FtpServer::Kind kind;
    bool isPassive;
};

class FtpServers : public FtpRig, public testing::WithParamInterface<Setting> {
  protected:
    std::string remote(const std::string& path) const { return server_.root() + "/repo/" + path; }
    std::vector<std::string> names(const std::string& path) {
        std::vector<std::string> found;
        ftp_->ListDir(path, found);
        std::sort(found.begin(), found.end());
        return found;
    }

    const FtpServer server_{GetParam().kind, dir_.path("server")};
    std::unique_ptr<tRepositoryTransport> ftp_ =
        transport("ftp://127.0.0.1:" + std::to_string(server_.port()) + "/repo", server_.login(),
                  server_.password(), GetParam().isPassive);
};

TEST_P(FtpServers, KeepFiles) {
    const std::string strange = "clients/a b/f #1;type=a?%41";
    const std::string content(100000, '\n');
    put(*ftp_, strange, content);
    EXPECT_EQ(content, contentOf(remote(strange)));
    EXPECT_EQ(content, get(*ftp_, strange));
    put(*ftp_, "clients/a b/empty", "");
    EXPECT_EQ("", get(*ftp_, "clients/a b/empty"));
    put(*ftp_, strange, "shorter");
    EXPECT_EQ("shorter", contentOf(ftp_->GetLocalFile(strange)));
    EXPECT_TRUE(ftp_->IsExist(strange));
    EXPECT_FALSE(ftp_->IsExist("clients/none"));
    EXPECT_FALSE(ftp_->IsExist("none/none"));

    put(*ftp_, "clients/plain_1203011530.tgz", content);
    std::vector<FileInfo> entries;
    ftp_->ListDirEx("clients", entries);
    const auto file = std::find_if(entries.begin(), entries.end(), [](const FileInfo& entry) {
        return entry.name == "plain_1203011530.tgz";
    });
    ASSERT_NE(entries.end(), file);
    EXPECT_EQ(content.size(), file->size);

    ftp_->Delete(strange);
    EXPECT_EQ(std::vector<std::string>{"empty"}, names("clients/a b"));
    EXPECT_NE("", messageOf([this] { ftp_->Delete("clients/none"); }));
    EXPECT_NE("", messageOf([this] { get(*ftp_, "clients/none"); }));
    EXPECT_FALSE(log_.holds(server_.password()));
}

// Catches: a directory that is looked for or made in the one of the operation before it.
TEST_P(FtpServers, KeepDirectories) {
    EXPECT_FALSE(ftp_->IsDirExist("a"));
    ftp_->CreateDir("a");
    ftp_->CreateDir("a");
    EXPECT_TRUE(ftp_->IsDirExist("a"));
    EXPECT_TRUE(ftp_->IsDirExist("a"));
    EXPECT_TRUE(ftp_->IsDirExist(""));
    EXPECT_TRUE(names("a").empty());
    ftp_->CreateDir("a/a");
    EXPECT_TRUE(ftp_->IsDirExist("a/a"));
    EXPECT_FALSE(ftp_->IsDirExist("a/a/a"));
    EXPECT_EQ("unable to create directory: Access denied to remote resource",
              messageOf([this] { ftp_->CreateDir("b/c"); }));
    put(*ftp_, "a/a/.hidden", "");
    put(*ftp_, "a/f", "");
    EXPECT_EQ((std::vector<std::string>{"a", "f"}), names("a"));
    EXPECT_FALSE(ftp_->IsDirExist("a/f"));
    ftp_->ListDirEx("a", *std::make_unique<std::vector<FileInfo>>());
    std::filesystem::remove(remote("a/f"));
    put(*ftp_, "b/f", "");
    std::filesystem::create_symlink("../b", remote("a/link"));
    std::filesystem::create_symlink("b", remote("link"));
    ftp_->DeleteDir("a");
    ftp_->DeleteDir("link");
    EXPECT_FALSE(std::filesystem::is_symlink(remote("link")));
    EXPECT_TRUE(std::filesystem::exists(remote("b/f")));
    EXPECT_FALSE(std::filesystem::exists(remote("a")));
    EXPECT_FALSE(ftp_->IsDirExist("a"));
    EXPECT_NE("", messageOf([this] { ftp_->DeleteDir("/"); }));
}

TEST_P(FtpServers, TakeWholeDirectories) {
    const std::string place = ftp_->GetReceivingDir();
    std::filesystem::create_directories(place + "in/sub/empty");
    std::ofstream(place + "in/sub/f") << "content";
    ftp_->ReceiveDir("in/sub");
    EXPECT_EQ("content", contentOf(remote("in/sub/f")));
    EXPECT_TRUE(std::filesystem::is_directory(remote("in/sub/empty")));
    EXPECT_EQ("content", contentOf(ftp_->GetLocalDirFiles("in/sub", {"f"}) + "/f"));
    ftp_->ReceiveDir("");
    EXPECT_EQ(std::vector<std::string>{"in"}, names(""));
}

// Catches: a marker that is written nowhere, and a rollback that leaves a part behind.
TEST_P(FtpServers, HoldARepository) {
    tRepository repository("ftp://127.0.0.1:" + std::to_string(server_.port()) + "/repo",
                           server_.login(), server_.password(), "", GetParam().isPassive);
    repository.PutInfo("domains/d/info_1203011530.xml", "<x/>");
    EXPECT_EQ("<x/>", repository.GetInfo("domains/d/info_1203011530.xml"));
    repository.CreateDiscovered("domains/d", "info_1203011530", 7, "o", "client", "guid", "12");
    EXPECT_EQ(Paths{"7"}, repository.GetDiscoveredItems("domains/d", "info_1203011530", "size"));
    EXPECT_EQ(Paths{"12"}, tRepository::GetDiscoveredNames(*ftp_, "guid"));
    repository.BeginTransaction();
    repository.CreateDir("new");
    repository.Put(dir_.write("f", "content"), "new/dir/f");
    repository.Get("new/dir/f", dir_.path("g"));
    EXPECT_EQ("content", contentOf(dir_.path("g")));
    // What cannot be fetched costs no file that is there, and makes none.
    EXPECT_NE("", messageOf([&] { repository.Get("none", dir_.path("g")); }));
    EXPECT_EQ("content", contentOf(dir_.path("g")));
    EXPECT_NE("", messageOf([&] { repository.Get("none", dir_.path("h")); }));
    EXPECT_FALSE(std::filesystem::exists(dir_.path("h")));
    repository.RollbackTransaction();
    EXPECT_FALSE(std::filesystem::exists(remote("new")));
}

class HidingFtpServer : public FtpServers {};

// Catches: a backup of which a part is not found, and a directory that a deletion empties of all
// but that part.
TEST_P(HidingFtpServer, HidesNoPartOfABackup) {
    const std::string item = "d/.discovered/p_info_1203011530/size_7";
    put(*ftp_, item, "");
    put(*ftp_, "d/p_info_1203011530.xml", "");
    EXPECT_FALSE(ftp_->IsExist("d/.discovered"));
    DumpFiles found;
    FindInfoXmlAndDiscovered(*ftp_, "d", "1203011530", "p", true, found);
    EXPECT_EQ(Paths{"d/.discovered/p_info_1203011530"}, found.discovered);
    ftp_->DeleteDir("d");
    EXPECT_FALSE(std::filesystem::exists(remote("d")));
}

INSTANTIATE_TEST_SUITE_P(Kinds, HidingFtpServer,
                         testing::Values(Setting{FtpServer::Kind::kHidingVsftpd, true}));
INSTANTIATE_TEST_SUITE_P(Kinds, FtpServers,
                         testing::Values(Setting{FtpServer::Kind::kVsftpd, true},
                                         Setting{FtpServer::Kind::kPyftpdlib, false}));

}  // namespace
}  // namespace zelvo
