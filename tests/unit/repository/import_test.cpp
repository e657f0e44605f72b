#include "ftp_server.h"
#include "repository/discovered_items.h"
#include "repository_rig.h"

namespace zelvo {
namespace {

class Import : public RepositoryRig {
  protected:
    // Makes an archive of a client's dump, then has a shell change what is packed.
    // Returns the name of the archive.
    std::string pack(const std::string& change) const {
        const std::string script =
            "rm -rf \"$1/a\" && mkdir -p \"$1/a/.discovered/p_info_1203011530\" \"$1/a/d\" && "
            "cd \"$1/a\" && i=.discovered/p_info_1203011530 && "
            "printf '<client guid=\"G\"><cid path=\"d\"><content-file>p_y_1203011530.tar"
            "</content-file></cid></client>' > p_info_1203011530.xml && "
            "echo x > p_x_1203011530.tgz && echo y > d/p_y_1203011530.tar && "
            "touch $i/GUID_G $i/objectid_7 $i/owner_O $i/size_5 $i/status_OK && add= && " +
            change + " && tar -czPf \"$1/in.tgz\" $add $(ls -A)";
        EXPECT_EQ(0, system(("sh -c '" + quoted(script) + "' sh " + dir_.path("")).c_str()))
            << change;
        return "in.tgz";
    }
    static std::string quoted(const std::string& script) {
        std::string text;
        for (const char c : script) text += c == '\'' ? "'\\''" : std::string(1, c);
        return text;
    }
    std::string importTold(const std::string& type = "client", const std::string& guid = "O") {
        return messageOf([&] { repository_.Import(dir_.path("in.tgz"), "", false, type, guid); });
    }

    const std::string info_ = "clients/7/p_info_1203011530.xml";
};

TEST_F(Import, MakesABackupThatIsFoundAndChecked) {
    // The index gets the objects below the dump's as well.
    pack(
        "mkdir d/.discovered && cp -r $i d/.discovered && mv d/$i/GUID_G d/$i/GUID_V && "
        "chmod 4777 p_x_1203011530.tgz d");
    const DumpImportResult result =
        repository_.Import(dir_.path("in.tgz"), "", false, "reseller", "O");
    EXPECT_EQ(info_, result.path);
    EXPECT_EQ(DumpImportStatus::kNew, result.status);
    for (const char* kept : {"r/clients/7/d", "r/clients/7/p_x_1203011530.tgz"}) {
        EXPECT_EQ(std::filesystem::perms{0755},
                  std::filesystem::status(dir_.path(kept)).permissions());
    }
    const std::string items = "clients/7/.discovered/p_info_1203011530/";
    const std::string below = "clients/7/d/.discovered/p_info_1203011530/";
    EXPECT_EQ(
        sorted(".discovered/G_7 .discovered/V_7 " + info_ +
               " clients/7/p_x_1203011530.tgz "
               "clients/7/d/p_y_1203011530.tar " +
               below + "GUID_V " + below + "objectid_7 " + below + "owner_O " + below + "size_5 " +
               items + "GUID_G " + items + "objectid_7 " + items + "owner_O " + items + "size_5"),
        files());
    const auto found = backupsIn(repository_, "client", "G", "O", true);
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ(BackupStatus::kOk, found[0].validation.at(0).status);
    EXPECT_EQ(DumpImportStatus::kAlreadyThere,
              repository_.Import(dir_.path("in.tgz"), "", false, "client", "O").status);
    // What an export makes of it can be imported, and is to be checked anew.
    repository_.Export(info_, dir_.path("in.tgz"), "", false);
    const std::string before = files();
    repository_.DeleteBackup(info_);
    EXPECT_EQ(
        "", messageOf([&] { repository_.Import(dir_.path("in.tgz"), "", false, "client", "G"); }));
    EXPECT_EQ(before, sorted(files() + items + "status_OK"));
}

// Catches: an archive that writes anywhere, or leaves anything, although it is not one sound dump.
TEST_F(Import, RefusesWhatIsNotOneDumpOfTheOwner) {
    const struct {
        const char* change;
        const char* told;
    } rows[] = {
        {"echo > q_info_1203011530.xml", "root of arhive in.tgz contains more than 1 xml file"},
        {"rm p_info_1203011530.xml", "root of arhive in.tgz does no contains xml files"},
        {"mv p_info_1203011530.xml p_info_12.xml", "bad name of info file"},
        {"echo > p_x_1203011531.tgz",
         "Dump has wrong format. Archive file 'p_x_1203011531.tgz' does not match to dump label "
         "'1203011530'"},
        {"echo > p_1203011530.tgz", "Archive file 'p_1203011530.tgz' does not match to dump label"},
        {"echo > d/q_x_1203011530.tgz",
         "Dump has wrong format. Archive file 'd/q_x_1203011530.tgz' does not match to dump prefix "
         "'p'"},
        {"mkdir d/.discovered && cp -r $i d/.discovered/q_info_1203011530",
         "Dump has wrong format. Discovered dir 'q_info_1203011530' does not match to dump prefix "
         "'p'"},
        {"touch .discovered/p_7",
         "Dump has wrong format. Discovered dir 'p_7' does not match to dump label '1203011530'"},
        {"echo > ../p_z_1203011530.tgz && add=../p_z_1203011530.tgz",
         "Dump has wrong format. Member '../p_z_1203011530.tgz' is no name of a repository"},
        {"mkdir \"\\\\..\" && echo > \"\\\\../p_z_1203011530.tgz\"",
         "/' is no name of a repository"},
        {"add=/etc/hostname",
         "Dump has wrong format. Member '/etc/hostname' is no name of a repository"},
        // A file behind a link that leads out, and the file that a link out would write to.
        {"ln -s \"$1/other\" c && add=--transform=s,^d/,c/,", "is neither a file nor a directory"},
        {"ln d/p_y_1203011530.tar p_l_1203011530.tgz && "
         "add=--transform=s,^d/,../../other/,R",
         "is neither a file nor a directory"},
        {"mknod p_l_1203011530.tgz c 1 3", "is neither a file nor a directory"},
        {"mkfifo p_l_1203011530.tgz", "is neither a file nor a directory"},
        {"mkdir e && add=./e", "Dump has wrong format. Member './e/' is written with a './'"},
        {"rm $i/objectid_7", " Dump not have object id"},
        {"rm $i/owner_O", " Dump does not match to guid O"},
        {"rm $i/owner_O && mkdir -p .discovered/p_o_info_1203011530 && touch "
         ".discovered/p_o_info_1203011530/owner_O",
         " Dump does not match to guid O"},
        {"sed -i s/client/server/g p_info_1203011530.xml", " Dump does not match to type client"},
        {"touch $i/objectid_8", "Dump has more than one object id"},
        {"mv $i/objectid_7 $i/objectid_8", "Object id '8' is that of another object"},
        {"touch $i/GUID_V && mv $i/objectid_7 $i/objectid_8", "Dump has more than one guid"},
        {"mv $i/objectid_7 $i/objectid_..", "is no single component"},
        {"mv $i/GUID_G $i/GUID_", "is no single component"},
        {"mkdir $i/GUID_H && touch $i/GUID_H/x", "is no single component"},
        {"mv $i/objectid_7 $i/objectid_9 && echo > p_there_1203011530.tgz",
         "file 'clients/9/p_there_1203011530.tgz' exists"},
        {"mv $i/objectid_7 $i/objectid_9 && mkdir p_there_1203011530.tgz",
         "file 'clients/9/p_there_1203011530.tgz' exists"},
        {"mv $i/objectid_7 $i/objectid_9 && mkdir -p ../o/p_there_1203011530.tgz && add='-C ../o "
         "p_there_1203011530.tgz/p_z_1203011530.tgz -C ../a' && echo > ../o/p_there_1203011530.tgz/"
         "p_z_1203011530.tgz",
         "file 'clients/9/p_there_1203011530.tgz' exists"},
    };
    const std::string there =
        ".discovered/G_8 clients/8/.discovered/x/GUID_V clients/9/p_there_1203011530.tgz ";
    for (const auto& row : rows) {
        std::filesystem::remove_all(dir_.path("r"));
        make(there);
        pack(row.change);
        EXPECT_NE(std::string::npos, importTold().find(row.told))
            << row.change << ": " << importTold();
        EXPECT_EQ(there, files());
        EXPECT_EQ("", files(dir_.path("other")));
    }
}

// Catches: half an import that stays, and one that takes along what was there.
TEST_F(Import, IsUndone) {
    make("clients/7/q_info_1203011530.xml clients/7/d/q_x_1203011530.tgz u/d/p_y_1203011530.tar");
    const std::string before = files();
    pack("head -c 3000000 /dev/urandom > p_z_1203011530.tgz");
    repository_.BeginTransaction();
    tRepository(dir_.path(""), "", "", "", false)
        .UnpackToRepo({"in.tgz"}, repository_, "u", {"d", "p_x_1203011530.tgz"});
    EXPECT_NE(before, files());
    repository_.RollbackTransaction();
    EXPECT_EQ(before, files());
    repository_.BeginTransaction();
    repository_.Import(dir_.path("in.tgz"), "", false, "client", "O");
    EXPECT_NE(before, files());
    repository_.RollbackTransaction();
    EXPECT_EQ(before, files());
    // The index cannot be written when all else is there.
    std::ofstream(dir_.path("r/.discovered")) << "in the way";
    repository_.BeginTransaction();
    EXPECT_NE("", importTold());
    repository_.RollbackTransaction();
    EXPECT_EQ(sorted(".discovered " + before), files());
}

// Catches: an operation that takes the files of a repository for local ones.
TEST_F(Import, GoesToAndFromServers) {
    const FtpServer server(FtpServer::Kind::kPyftpdlib, dir_.path("server"));
    const std::string root = server.root() + "/repo";
    tRepository far("ftp://127.0.0.1:" + std::to_string(server.port()) + "/repo", server.login(),
                    server.password(), "", true);
    tRepository near(dir_.path(""), "", "", "", false);
    far.PutInfo("b/x_1203011530.tgz", "x");
    for (const char* name : {"x_1203011531.tgz", "x_1203011532.tgz", "a x_1203011533.tgz"}) {
        near.PackedExportToRepo(pack("true"), far, std::string("b/") + name);
    }
    EXPECT_EQ("file b/x_1203011531.tgz exists",
              messageOf([&] { far.PackFromRepo(near, "a", "b/x_1203011531.tgz"); }));
    far.RotateFileBackup("b", "x.tgz", 2);
    EXPECT_FALSE(std::filesystem::exists(root + "/b/x_1203011530.tgz"));
    EXPECT_EQ(BackupStatus::kOk, far.ValidatePackedBackup("b/x_1203011532.tgz").at(0).status);
    EXPECT_EQ(info_, far.ImportFromRepo(far, "b/x_1203011531.tgz", "client", "O").path);
    for (int i = 0; i < 2; ++i) {
        const auto found = backupsIn(far, "client", "G", "O", true);
        ASSERT_EQ(1U, found.size());
        EXPECT_EQ(BackupStatus::kOk, found[0].validation.at(0).status);
    }
    far.ExportToRepo(info_, near, "in", "tgz");
    far.RotateStructuredBackup("O", "clients/7/p_info", 0);
    EXPECT_EQ(
        ".discovered/G_7 b/a x_1203011533.tgz b/x_1203011531.tgz b/x_1203011532.tgz "
        "clients/ ",
        files(root));
    // Catches: an import that sends the files of the one before again.
    far.UnpackToRepo({"b/x_1203011531.tgz"}, far, "u", {"p_x_1203011530.tgz"});
    std::filesystem::remove(root + "/u/p_x_1203011530.tgz");
    far.UnpackToRepo({"b/x_1203011531.tgz"}, far, "u", {"d"});
    EXPECT_EQ("d/p_y_1203011530.tar ", files(root + "/u"));
    far.ImportFromRepo(near, "in.tgz", "client", "O");
    EXPECT_TRUE(std::filesystem::exists(root + "/" + info_));
}

TEST_F(Import, ChecksPackedBackups) {
    const struct {
        const char* change;
        const char* status;
    } rows[] = {
        {"true", "OK"},
        {"rm d/p_y_1203011530.tar", "CONTENT-ERROR"},
        {"sed -i s/client/other/g p_info_1203011530.xml", "WRONG-FORMAT"},
        {"rm p_info_1203011530.xml", "WRONG-FORMAT"},
        {"cp p_info_1203011530.xml z_info_1203011530.xml", "WRONG-FORMAT"},
        {"mv p_info_1203011530.xml p_info_12.xml", "WRONG-FORMAT"},
        {"rm -r .discovered && ln -s ../other .discovered", "WRONG-FORMAT"},
        {"echo '<client>bad</client>' > p_info_1203011530.xml", "SIGN-ERROR"},
    };
    for (const auto& row : rows) {
        std::filesystem::copy_file(dir_.path(pack(row.change)), dir_.path("r/in.tgz"),
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(row.status,
                  GetBackupStatusStr(repository_.ValidatePackedBackup("in.tgz").at(0).status))
            << row.change;
        EXPECT_EQ("", files(dir_.path("other")));
    }
}

}  // namespace
}  // namespace zelvo
