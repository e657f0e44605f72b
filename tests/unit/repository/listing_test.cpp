#include "repository/discovered_items.h"
#include "repository/tolerated_dir.h"
#include "repository_rig.h"
#include "scripted_ftp_server.h"

namespace zelvo {
namespace {

using Listing = RepositoryRig;

std::string pathsOf(const std::vector<BackupInfo>& backups) {
    std::string text;
    for (const BackupInfo& backup : backups) {
        text += backup.path + ":" + std::to_string(backup.size) + " ";
    }
    return text;
}

// Catches: a backup that is not found where imports put it, and one bad backup that hides the rest.
TEST_F(Listing, FindsTheBackupsOfAnObject) {
    const std::string name = "p_info_1203011530";
    for (const char* dir : {"", "clients/7/", "resellers/3/clients/7/", "clients/8/",
                            "clients/5/domains/7/", "resellers/3/clients/5/domains/7/"}) {
        makeDump(dir + name + ".xml", "O", "<admin><description>a&amp;b</description></admin>");
    }
    makeDump("clients/7/q_info_1203011531.xml", "P");
    makeDump("clients/7/broken_info_1203011532.xml", "O", "<admin>");
    makeDump("clients/7/lost_info_1203011533.xml", "O");
    std::filesystem::remove(dir_.path("r/clients/7/lost_info_1203011533.xml"));
    const std::string items = "r/clients/7/.discovered/q_info_1203011531/size_";
    std::filesystem::rename(dir_.path(items + "5"), dir_.path(items + "5x"));
    std::filesystem::create_directory(dir_.path("r/clients/9"));
    repository_.CreateRepositoryIndex("G_9");

    const std::string deep = "resellers/3/clients/7/" + name + ".xml:5 ";
    const struct {
        const char* type;
        const char* guid;
        const char* owner;
        std::string found;
    } rows[] = {
        {"client", "G", "O", "clients/7/" + name + ".xml:5 " + deep},
        {"client", "G", "P", "clients/7/q_info_1203011531.xml:0 "},
        {"client", "H", "", ""},
        {"domain", "G", "",
         "clients/5/domains/7/" + name + ".xml:5 resellers/3/clients/5/domains/7/" + name +
             ".xml:5 "},
        {"server", "H", "", name + ".xml:5 "},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.found, pathsOf(backupsIn(repository_, row.type, row.guid, row.owner)))
            << row.type << row.guid << row.owner;
    }
    EXPECT_EQ(10U, repository_.GetDiskUsage("client", "G", ""));
    EXPECT_THROW(repository_.GetDiskUsage("x", "G", ""), RepositoryException);
    for (const char* line :
         {"Unable to parse size of dump: 5x",
          "Discovered dir lost_info_1203011533 exists but file "
          "clients/7/lost_info_1203011533.xml not exists. Skipping.",
          "Error: unable to retreave backup info from clients/7/broken_info_1203011532.xml: ",
          "'.discovered' directory for 'client' '9' not found"}) {
        EXPECT_TRUE(log_.holds(line)) << line;
    }
    const BackupInfo info = repository_.GetBackupInfo("clients/7/" + name + ".xml", true);
    EXPECT_EQ("p_info_1203011530 O server 7 G a&amp;b 1203011530 1",
              info.name + " " + info.owner_guid + " " + info.owner_type + " " + info.object_id +
                  " " + info.guid + " " + info.description + " " + info.GetDateTimeStr() + " " +
                  std::to_string(info.validation.size()));
    EXPECT_EQ("Discovered dir '.discovered/x' not found",
              messageOf([&] { repository_.GetBackupInfo("x.xml", false); }));
}

// Catches: a directory that hides what stands in the others.
TEST_F(Listing, GoesOnBehindADirectoryThatCannotBeListed) {
    const ScriptedFtpServer server(FtpScript{{{"NLST", "550 no"}, {"LIST", "550 no"}}});
    tRepository far(server.url("/d"), "u", "p", "", true);
    std::vector<BackupInfo> found;
    EXPECT_EQ("", messageOf([&] { far.AllBackupsList("", found); }));
    for (const char* dir : {".discovered", "resellers", "clients", "domains"}) {
        EXPECT_TRUE(log_.holds(std::string("Error: unable to list directory '") + dir + "': "))
            << dir;
    }
    tRepository gone(dir_.path("gone"), "", "", "", false);
    EXPECT_EQ("lost", messageOf([&] {
                  toleratedDir(gone.transport(), "x", [] { throw EXC(RepositoryError) % "lost"; });
              }));
}

TEST_F(Listing, ChecksBackups) {
    const std::string content = "<cid path='d'><content-file>f</content-file></cid>";
    const std::string path = "c/p_info_1203011530.xml";
    const struct {
        std::string document;
        const char* status;
    } rows[] = {
        {"<Envelope>\n<admin/>\n</Envelope>\n", "OK"},
        {"<client/>", "OK"},
        {"<other/>", "WRONG-FORMAT"},
        {"<Envelope>\n<other/>\n</Envelope>\n", "WRONG-FORMAT"},
        {"<Envelope><bad/></Envelope>", "SIGN-ERROR"},
        {"<admin>bad</admin>", "SIGN-ERROR"},
        {"<admin>" + content + "</admin>", "CONTENT-ERROR"},
        {"<Envelope>\n<admin>" + content + "</admin>\n</Envelope>\n", "CONTENT-ERROR"},
    };
    for (const auto& row : rows) {
        makeDump(path, "O", row.document);
        const auto results = repository_.ValidateBackup(path, true);
        ASSERT_EQ(1U, results.size());
        EXPECT_EQ(row.status, GetBackupStatusStr(results[0].status)) << row.document;
        EXPECT_EQ(Paths{row.status}, repository_.GetDiscoveredItems(path, D_ITEM_STATUS));
    }
    EXPECT_EQ(BackupStatus::kOk, repository_.ValidateBackup(path, {"c/d/f"}, true)[0].status);
    // What is stored is believed, until it is asked for anew.
    makeDump(path, "O", "<admin/>");
    repository_.ValidateBackup(path, true);
    makeDump(path, "O", "<other/>");
    EXPECT_EQ(BackupStatus::kOk, repository_.ValidateBackup(path, false)[0].status);
    EXPECT_EQ(BackupStatus::kWrongFormat, repository_.ValidateBackup(path, true)[0].status);
    // One that cannot be stored leaves no older one.
    const std::string status = dir_.path("r/c/.discovered/p_info_1203011530/status_");
    std::filesystem::create_symlink("/none/x", status + "OK");
    makeDump(path, "O", "<admin/>");
    repository_.ValidateBackup(path, true);
    EXPECT_FALSE(std::filesystem::exists(status + "WRONG-FORMAT"));
    // No verdict on what cannot be read.
    makeDump("c/p_info_1203011531.xml", "O", "<admin>");
    const auto results = repository_.ValidateBackup("c/p_info_1203011531.xml", true);
    EXPECT_EQ("WRONG-FORMAT unable to check xml validity: failed to load xml document",
              GetBackupStatusStr(results[0].status) + " " + results[0].message);
    EXPECT_EQ(Paths(), repository_.GetDiscoveredItems("c/p_info_1203011531.xml", D_ITEM_STATUS));
    const std::string tool = dir_.path("q/admin/sbin/backup_sign");
    const struct {
        const char* script;
        std::string told;
    } faults[] = {
        {"#!/none\n", tool + " could not be started"},
        {"#!/bin/sh\nkill -9 $$\n", tool + " was killed"},
        {"#!/bin/sh\n", "the signing tool has given no document"},
    };
    makeDump("c/p_info_1203011532.xml", "O");
    for (const auto& fault : faults) {
        dir_.write("q/admin/sbin/backup_sign", fault.script);
        EXPECT_EQ("unable to check xml validity: " + fault.told,
                  repository_.ValidateBackup("c/p_info_1203011532.xml", true)[0].message);
        EXPECT_EQ(Paths(),
                  repository_.GetDiscoveredItems("c/p_info_1203011532.xml", D_ITEM_STATUS));
    }
    EXPECT_EQ("status string value incorrect: ok", messageOf([] { GetBackupStatusVal("ok"); }));
    EXPECT_EQ("status value incorrect: 4",
              messageOf([] { GetBackupStatusStr(static_cast<BackupStatus>(4)); }));
}

TEST_F(Listing, FindsPackedBackups) {
    make(
        "b/p_1203011530.tgz b/p_1203011530.tgz1 b/q_1203011531.tar b/p_1203011530.zip "
        "b/p_9999999999.tgz b/p_1203011532.tgz/x");
    std::vector<BackupInfo> found;
    repository_.PackedBackupsList("b", "p.*", found);
    ASSERT_EQ(2U, found.size());
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.path < b.path; });
    EXPECT_EQ("b/p_1203011530.tgz:16 b/p_9999999999.tgz:8 ", pathsOf(found));
    EXPECT_EQ("1203011530", found[0].GetDateTimeStr());
    EXPECT_EQ(8, repository_.GetPackedBackupInfo("b/q_1203011531.tar").size);
    EXPECT_EQ("File 'b/none' not found",
              messageOf([&] { repository_.GetPackedBackupInfo("b/none"); }));
    EXPECT_EQ(0U, messageOf([&] {
                      repository_.PackedBackupsList("b", "(", found);
                  }).find("mask '(' is refused: "));
    const std::string huge = "-rw-r--r-- 1 u g 9223372036854775807 Jan 1 2012 p_1203011530.tgz";
    const ScriptedFtpServer server(
        FtpScript{{},
                  huge + "\r\n" + huge + "1\r\n" +
                      "drwxr-xr-x 2 u g 5 Jan 1 2012 d_1203011530.tgz\r\n"
                      "01-01-12  10:00AM       <DIR>          d_1203011530.tar\r\n"});
    tRepository far(server.url("/d"), "u", "p", "", true);
    found.clear();
    far.PackedBackupsList("", "", found);
    EXPECT_EQ("p_1203011530.tgz:9223372036854775807 ", pathsOf(found));
}

}  // namespace
}  // namespace zelvo
