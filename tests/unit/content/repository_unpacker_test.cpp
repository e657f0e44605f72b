#include "content/repository_unpacker.h"

#include "ftp_server.h"
#include "repository/archive_extraction.h"
#include "repository/file_parts.h"
#include "told.h"
#include "unpacking.h"

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using zelvo::tRepository;

namespace {

class RepositoryUnpackerTest : public Unpacking {
  protected:
    RepositoryUnpackerTest() { std::filesystem::create_directories(to); }
    // No way out may leave lists, scripts, volumes or dumps behind.
    ~RepositoryUnpackerTest() override {
        unpacker.reset();
        EXPECT_TRUE(isTmpEmpty());
    }

    void open(const std::string& place, const std::string& login = "",
              const std::string& password = "") {
        unpacker = std::make_unique<zelvo::RepositoryUnpacker>(
            std::make_unique<tRepository>(place, login, password, "", false));
    }
    // Puts an archive into a directory in pieces of these names.
    void writeVolumes(const std::string& archive, const Paths& names,
                      const std::string& directory) {
        const std::size_t size = archive.size() / names.size() + 1;
        cid.files = names;
        std::filesystem::create_directories(dir.path(directory + "/archives"));
        for (std::size_t i = 0; i < names.size(); ++i) {
            dir.write(directory + "/archives/" + names[i], archive.substr(i * size, size));
        }
    }
    Paths unpack(const Paths& includes = {}) { return unpacker->unpackTar(cid, to, includes); }
    std::string fault(const Paths& includes = {}) {
        return messageOf([&] { unpack(includes); });
    }

    const std::string to = dir.path("session/out");
    std::unique_ptr<zelvo::RepositoryUnpacker> unpacker;
};

const std::vector<Member> kMembers = {
    {"a/", '5', "", "", 0750}, {"a/-x"}, {"a/b/deep"}, {"-x"}, {"line\nfeed\\ \303\251\377"}};

}  // namespace

// Catches: a name that a shell or Perl takes for more than that, and names as tar quotes them.
TEST_F(RepositoryUnpackerTest, JoinsVolumesOfAnyName) {
    const Paths hostile = {"$(echo evil)`echo evil`", "';echo evil;'\"; system 'echo evil'; \"",
                           "@{[system 'echo evil']}$0%ENV \\\\ {b,c}*?~ #&|<>", "-x:y"};
    open(dir.path("session"));
    for (const Paths& names : {hostile, Paths{hostile[1]}}) {
        writeVolumes(tarOf(kMembers), names, "session");
        EXPECT_THAT(unpack(),
                    ElementsAre("a/", "a/-x", "a/b/deep", "-x", "line\nfeed\\ \303\251\377"));
    }
    EXPECT_EQ(attributesOf(to + "/a"), "40750 1001:1002");
    // A place in the working directory is no host of GNU tar's.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path(""));
    std::filesystem::rename(dir.path("session"), dir.path("c:d"));
    std::filesystem::create_directories(to);
    open("c:d");
    EXPECT_EQ(unpack().size(), 5U);
    std::filesystem::current_path(before);
}

TEST_F(RepositoryUnpackerTest, TakesTheIncludesAlone) {
    open(dir.path("session"));
    writeVolumes(tarOf(kMembers), {"1", "2"}, "session");
    EXPECT_THAT(unpack({"-x", "a/b", "a/b/deep"}), ElementsAre("a/b/deep", "-x"));
    for (const char* include : {"a\n--to-command=sh", "../a"}) {
        EXPECT_THAT(fault({include}), HasSubstr("is refused")) << include;
    }
    EXPECT_THAT(fault({"none"}),
                testing::AllOf(testing::StartsWith("Cannot unpack: Archiver error: "
                                                   "from "),
                               HasSubstr("none: Not found in archive")));
    writeVolumes(tarOf({{"w*?[x]\\\\y"}, {"w*?[x]\\y"}, {"wabxy"}}), {"w"}, "session");
    EXPECT_THAT(unpack({"w*?[x]\\y"}), ElementsAre("w*?[x]\\y"));
    EXPECT_THAT(fault({"w*"}), HasSubstr("Not found in archive"));
    Paths names;
    const Paths volumes = {dir.path("session/archives/1"), dir.path("session/archives/2")};
    zelvo::ExtractArchive(volumes, to, {}, {"a"}, names);
    EXPECT_THAT(names, ElementsAre("-x", "line\nfeed\\ \303\251\377"));
    zelvo::ExtractArchiveRoot(volumes, to, names);
    EXPECT_THAT(names, ElementsAre("a/", "-x", "line\nfeed\\ \303\251\377"));
    zelvo::ExtractArchiveSubDir(volumes, to, "a", names);
    EXPECT_THAT(names, ElementsAre("a/-x", "a/b/deep"));
}

// Catches: content that is lost and told as restored, and what a failure leaves half.
TEST_F(RepositoryUnpackerTest, RaisesWhatFailed) {
    open(dir.path("session"));
    const std::string archive = tarOf({{"one"}, {"two", '0', "", std::string(9000, 'x')}});
    writeVolumes(archive, {"1", "2", "3"}, "session");
    const std::string part = to + "/part";
    unpacker->extractPart(cid, part);
    EXPECT_EQ(contentOf(part), archive);
    dir.write("session/archives/3", "");
    EXPECT_THAT(fault(), HasSubstr("tar: Unexpected EOF in archive"));
    std::filesystem::remove(to + "/one");
    std::filesystem::remove(dir.path("session/archives/2"));
    const std::string missing = dir.path("session") + "/archives/2";
    EXPECT_EQ(fault(), "Cannot unpack: File '" + missing + "' not found");
    EXPECT_FALSE(std::filesystem::exists(to + "/one"));
    EXPECT_THAT(messageOf([&] { unpacker->extractPart(cid, part); }),
                testing::StartsWith("Cannot extractPart: Stream error: Unable to open archives/2"));
    EXPECT_FALSE(std::filesystem::exists(part));
    const struct {
        Paths files;
        const char* reason;
    } rows[] = {{{}, "Archiver error: no files to extract"},
                {{"../../secret"}, "leads to another place"},
                {{"..", "1"}, "leads to another place"},
                {{"pipe"}, "not found"},
                {{"3"}, "File has wrong format"}};
    ASSERT_EQ(0, mkfifo(dir.path("session/archives/pipe").c_str(), 0600));
    for (const auto& row : rows) {
        cid.files = row.files;
        EXPECT_THAT(fault(), HasSubstr(row.reason));
    }
    // It is found, and cannot be read: nothing but its reader tells that what it holds is missing.
    std::filesystem::create_symlink("/proc/self/mem", dir.path("session/archives/unreadable"));
    dir.write("session/archives/1", archive);
    cid.files = {"1", "unreadable"};
    EXPECT_THAT(fault(), HasSubstr("unreadable: Input/output error"));
    EXPECT_EQ(messageOf([&] { unpacker->unpackTar(cid, "", {}); }),
              "Cannot unpack: no directory to unpack to");
    unpacker = std::make_unique<zelvo::RepositoryUnpacker>(nullptr);
    EXPECT_EQ(messageOf([&] {
                  unpacker->unpackDb(cid, {"mssql", "", "", "", ""}, "shop");
              }),
              "Cannot unpackDb: The operation is not supported: unpackDb mssql database");
}

TEST_F(RepositoryUnpackerTest, LoadsADatabaseWithNoDefaultsInFront) {
    std::filesystem::permissions(dir.path(""), std::filesystem::perms(0711));
    writeProgram(box("bin/mysql"), "echo \"$MYSQL_PWD $*\" >&2; cat >&2; exit 1\n");
    open(dir.path("session"));
    writeVolumes(tarOf({{"d.sql"}}), {"1"}, "session");
    const std::string told = messageOf([&] {
        unpacker->unpackDb(cid, {"mysql", "u", "pass", "h", "1"}, "shop");
    });
    EXPECT_THAT(told, testing::StartsWith("Cannot unpackDb: Execution of " + box("bin/mysql") +
                                          " --no-defaults -u u -h h -P 1 shop failed"));
    EXPECT_THAT(told, HasSubstr("/d.sql;\nexit\n"));
}

// Catches: a link of an earlier archive that leads the next one out of the destination.
TEST_F(RepositoryUnpackerTest, StaysInItsDestination) {
    open(dir.path("session"));
    std::filesystem::create_symlink(dir.path(""), to + "/l");
    writeVolumes(tarOf({{"l/evil"}}), {"1", "2"}, "session");
    fault();
    EXPECT_FALSE(std::filesystem::exists(dir.path("evil")));
}

TEST_F(RepositoryUnpackerTest, FetchesAnArchiveOnce) {
    const FtpServer server(FtpServer::Kind::kVsftpd, dir.path("ftp"));
    const std::string place = "ftp://127.0.0.1:" + std::to_string(server.port()) + "/repo";
    const std::string archive = tarOf(kMembers);
    writeVolumes(archive, {"x", "x1"}, "ftp/root/repo");
    open(place, server.login(), server.password());
    EXPECT_THAT(unpack({"a/b"}), ElementsAre("a/b/deep"));
    const std::string archives = server.root() + "/repo/archives/";
    std::filesystem::rename(archives + "x", archives + "gone");
    std::filesystem::rename(archives + "x1", archives + "gone1");
    EXPECT_EQ(unpack().size(), 5U);
    EXPECT_THAT(messageOf([&] { unpacker->extractPart(cid, to + "/part"); }),
                HasSubstr("Unable to open archives/x"));
    cid.files = {"gone", "gone1"};
    unpacker->extractPart(cid, to + "/part");
    EXPECT_EQ(contentOf(to + "/part"), archive);

    tRepository repository(place, server.login(), server.password(), "", false);
    const Paths parts = zelvo::GetFileParts(repository.transport(), "archives/gone");
    EXPECT_THAT(parts, ElementsAre("archives/gone", "archives/gone1"));
    EXPECT_EQ(messageOf([&] { zelvo::GetFileParts(repository.transport(), "archives/y"); }),
              "file 'y' does not exists");
    // What is unpacked into a repository far away gets there.
    tRepository local(dir.path("ftp/root/repo"), "", "", "", false);
    local.UnpackToRepo(parts, repository, "made", {"a"});
    EXPECT_TRUE(std::filesystem::exists(server.root() + "/repo/made/a/b/deep"));
}
