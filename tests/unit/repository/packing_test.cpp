#include <sys/wait.h>

#include <gmock/gmock.h>

#include "repository/archive_listing.h"
#include "repository_rig.h"

namespace zelvo {
namespace {

class Packing : public RepositoryRig {
  protected:
    // The members of an archive, sorted.
    std::string membersOf(const std::string& name) const {
        const std::string list = dir_.path("list");
        EXPECT_EQ(0, system(("tar -tf " + dir_.path(name) + " > " + list).c_str()));
        return sorted(contentOf(list));
    }

    tRepository other_{dir_.path("other"), "", "", "", false};
};

// Catches: an archive with a file of another dump, with an unsigned document, or without an item.
TEST_F(Packing, ExportsOneDumpSigned) {
    const std::string info = "clients/7/p_info_1203011530.xml";
    const std::string content =
        "<cid path='./d/'><content-file>p_y_1203011530.tar</content-file></cid>";
    makeDump(info, "O", "<admin>" + content + "</admin>\n");
    make(
        "clients/7/p_x_1203011530.tgz clients/7/d/p_y_1203011530.tar clients/7/p_x_1203011531.tgz "
        "clients/7/p_x_1203011530.tgz1 "
        "clients/7/q_x_1203011530.tgz");
    const std::string items = ".discovered/p_info_1203011530/";
    const std::string members = sorted(
        "p_info_1203011530.xml p_x_1203011530.tgz p_x_1203011530.tgz1 d/p_y_1203011530.tar " +
        items + "GUID_G " + items + "objectid_7 " + items + "owner_O " + items +
        "ownertype_server " + items + "size_5");
    repository_.Export(info, dir_.path("other/"), "", false);
    EXPECT_EQ(members, membersOf("other/p_1203011530.tgz"));
    EXPECT_EQ("\x1f\x8b", contentOf(dir_.path("other/p_1203011530.tgz")).substr(0, 2));
    repository_.Export(info, dir_.path("other/sub.tar"), "", false);
    EXPECT_EQ(members, membersOf("other/sub.tar"));
    const std::string archive = contentOf(dir_.path("other/sub.tar"));
    EXPECT_NE(std::string::npos, archive.find("<Envelope>\n<admin>" + content + "</admin>\n"));
    dir_.write("r/" + info, "<bad/>");
    EXPECT_NE("",
              messageOf([&] { repository_.Export(info, dir_.path("other/b.tar"), "", false); }));
    std::filesystem::remove(dir_.path("r/clients/7/d/p_y_1203011530.tar"));
    dir_.write("r/" + info, "<admin>" + content + "</admin>");
    EXPECT_EQ(
        "content file 'clients/7/d/p_y_1203011530.tar' was not found among the files of the backup",
        messageOf([&] { repository_.Export(info, dir_.path("other/b.tar"), "", false); }));
    EXPECT_EQ("p_1203011530.tgz sub.tar ", files(dir_.path("other")));
    for (const std::string url : {"x.tgz", "ftp://host", "FTP://host"}) {
        EXPECT_EQ("url '" + url + "' has no directory",
                  messageOf([&] { repository_.Export(info, url, "", false); }));
    }
    EXPECT_EQ("Archiver error: Multivolume packing not implemented",
              messageOf([&] { other_.PackFromRepo(repository_, "", {}, "a", "b", 1, {}); }));
    EXPECT_TRUE(log_.holds("Pack from " + dir_.path("r") + "/clients/7 to directory " +
                           dir_.path("other/") +
                           " using: filename sub, extension tar. Addditional "
                           "files count: 1. Split size: 0"));
}

// Catches: a name that the archiver takes for an option, and an archive that is half full.
TEST_F(Packing, PacksWhatStandsInADirectory) {
    make("a/--checkpoint-action=exec=x a/-b a/c/d other b\\057c/d\\n");
    other_.PackFromRepo(repository_, "a", "x/all.tar");
    EXPECT_EQ("--checkpoint-action=exec=x -b c/d ", membersOf("other/x/all.tar"));
    other_.PackFromRepo(repository_, "b\\057c", "x/all.tar");
    other_.Unpack({"x/all.tar"}, dir_.path("out\\057c\\"), {});
    EXPECT_EQ("d\\n ", files(dir_.path("out\\057c\\")));
    // A disk that is full costs neither the archive that is there nor leaves half a one.
    const std::string good = contentOf(dir_.path("other/x/all.tar"));
    std::filesystem::create_symlink("/dev/full",
                                    dir_.path("other/x/.new-" + std::to_string(getpid())));
    EXPECT_NE("", messageOf([&] { other_.PackFromRepo(repository_, "a", "x/all.tar"); }));
    EXPECT_EQ(good, contentOf(dir_.path("other/x/all.tar")));
    const std::string told = messageOf([&] {
        other_.PackFromRepo(repository_, "a", {"c/d", "lost"}, "y", "tar", 0, {});
    });
    EXPECT_EQ(0U, told.find("Archiver error: from " + dir_.path("r") + "/a to " +
                            dir_.path("other") + "/y.tar:\n"));
    EXPECT_EQ("x/all.tar ", files(dir_.path("other")));
}

// Catches: an archive that no import takes, and one with a file from beside the repository.
TEST_F(Packing, PacksNoLinks) {
    make("a/b/c/d");
    std::filesystem::create_hard_link(dir_.path("r/a/b/c/d"), dir_.path("r/a/b/second"));
    std::filesystem::create_symlink("/etc", dir_.path("r/a/out"));
    other_.PackFromRepo(repository_, "a/b", "plain.tar");
    EXPECT_THAT(ListPlainArchive({dir_.path("other/plain.tar")}),
                testing::UnorderedElementsAre("c/d", "second"));
    std::filesystem::create_symlink("c/d", dir_.path("r/a/b/in"));
    for (const Paths& files : {Paths{"b/c/d", "b/in"}, Paths{"out/hostname"}}) {
        EXPECT_EQ("Archiver error: 'a/" + files.back().substr(0, files.back().find("/hostname")) +
                      "' is neither a file nor a directory",
                  messageOf([&] { other_.PackFromRepo(repository_, "a", files, "y", "", 0, {}); }));
    }
    EXPECT_EQ("plain.tar ", files(dir_.path("other")));
}

TEST_F(Packing, CopiesArchivesWithTheirParts) {
    make("a/x.tgz a/x.tgz2 a/x.tgz1 a/x.tgzb a/y.tgz");
    repository_.PackedExportToRepo("a/x.tgz", other_, "b/z.tgz");
    EXPECT_EQ("b/z.tgz b/z.tgz1 b/z.tgz2 ", files(dir_.path("other")));
    std::filesystem::create_directories(dir_.path("other/y.tgz1"));
    make("a/y.tgz1 a/w.tgz a/w.tgz1");
    std::filesystem::remove(dir_.path("r/a/w.tgz1"));
    std::filesystem::create_symlink("/proc/self/mem", dir_.path("r/a/w.tgz1"));
    const struct {
        const char* path;
        const char* name;
        std::string told;
    } rows[] = {
        {"a/x.tgz", "b/z.tgz", "file z.tgz exists"},
        {"a/x.tgz", "", "destination path path is empty"},
        {"", "n", "path to exporting file is empty"},
        {"a/none", "n", "unable to export file: file 'none' does not exists"},
        {"a/", "n", "unable to export file: name of exporting file is empty"},
        {"a/y.tgz", "y.tgz", "unable to export file: file y.tgz1 exists"},
        {"a/w.tgz", "w.tgz", "unable to export file: Stream error: Input stream error:\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.told, messageOf([&] {
                      repository_.PackedExport(row.path, dir_.path("other/") + row.name, "", false);
                  }));
    }
    EXPECT_EQ("b/z.tgz b/z.tgz1 b/z.tgz2 y.tgz1/ ", files(dir_.path("other")));
}

}  // namespace
}  // namespace zelvo
