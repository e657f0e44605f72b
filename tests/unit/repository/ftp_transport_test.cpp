// FTP servers that refuse, fail or lie.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "commons/scoped_variable.h"
#include "commons/termination.h"
#include "ftp_rig.h"
#include "repository/repository.h"
#include "scripted_ftp_server.h"
#include "told.h"

namespace zelvo {
namespace {

using Status = TransportOperationStatus;
using std::string;
using testing::HasSubstr;

constexpr char kPassword[] = "s3cr#t?";

using Transport = tRepositoryTransport;

struct Failing {
    FtpScript script;
    // Of the transport, put to the directory "/d" of the server.
    std::function<void(Transport&)> operation;
    std::string failure;
    Status status = Status::kUnspecified;
    bool isPassive = true;
};

void list(Transport& transport) {
    std::vector<std::string> names;
    transport.ListDir("", names);
}
void read(Transport& transport) { transport.GetFile("f"); }
void write(Transport& transport) {
    const auto out = transport.PutFile("a/f");
    *out << "content";
    out->close();
}
void makeDir(Transport& transport) { transport.CreateDir("a"); }
void makeStrangeDir(Transport& transport) { transport.CreateDir("a\x01"); }
void remove(Transport& transport) { transport.Delete("a"); }
void removeDir(Transport& transport) { transport.DeleteDir("a"); }
void findDir(Transport& transport) { transport.IsDirExist("a"); }
void find(Transport& transport) { transport.IsExist("a/f"); }
void fetch(Transport& transport) { transport.GetLocalFile("f"); }
void fetchVolume(Transport& transport) { transport.GetLocalDirFiles("p", {"f"}); }

const std::string kList = "unable to list directory: ";
const std::string kRead = "unable to read file f";
const std::string kWrite = "unable to write file a/f: ";
const std::string kFetch = "Unable to download remote file ";
const std::string kFindDir = "unable to check directory existence: ";
const std::string kQuote = ": Quote command returned error";
const std::string kNoListing = "FTP: couldn't retrieve (RETR failed) the specified file";
const std::string kDenied = "Access denied to remote resource";
const Status kNoAccess = Status::kAccessDenied;
const FtpScript kShutParent = {{{"CWD d", "550 No"}, {"CWD a", "550 No"}}, "a\r\n"};

const Failing kFailing[] = {
    {{{{"PASS", "530 No, s3cr#t? is wrong"}}}, list, kList + "Login denied", kNoAccess},
    {{{{"USER", ""}}}, list, kList + "Failure when receiving data from the peer"},
    {{{{"greeting", "530 Full"}}}, list, kList + "Weird server reply"},
    {{{{"greeting", "-"}}}, list, kList + "Timeout was reached"},
    {{{{"CWD", "550 No"}}}, list, kList + kDenied, kNoAccess},
    {{{{"NLST", "550 No"}, {"LIST", "550 No"}}}, list, kList + kNoListing},
    {{{{"NLST", "550 No"}}, "something"}, list, kList + kNoListing},
    {{{}, std::string(5000000, '\n')}, list, kList + "the directory has too many entries"},
    {{{{"data", "-"}}}, list, kList + "FTP: Accepting server", Status::kDataTimeout, false},
    // Cut, less than was promised, not told to be whole.
    {{{{"SIZE", "213 100"}, {"transfer", ""}}, "half"}, read, kRead},
    {{{{"SIZE", "213 100"}}, "less"}, read, kRead},
    {{{{"transfer", "426 Broken"}}, "all"}, read, kRead},
    {{{{"RNFR", "550 None"}}}, write, kWrite + "Quote command returned error"},
    {{{{"STOR", "452 Full"}}}, write, kWrite + "Upload failed (at start/before it took off)"},
    {{{{"transfer", "452 Full"}}}, write, kWrite + "Transferred a partial file"},
    {{{{"MKD", "550 No"}, {"CWD d/a", "550 No"}}}, makeDir, "unable to create directory" + kQuote},
    {{{{"DELE", "550 No"}}}, remove, "unable to delete directory" + kQuote},
    // Directories without end.
    {{{{"DELE", "550 No"}}, "x\r\n"}, removeDir, " is too deep"},
    {{{{"PASS", "530 Full"}}}, findDir, kFindDir + "Login denied", kNoAccess},
    {{{{"CWD d/a", "421 Bye"}}}, findDir, kFindDir + "Timeout was reached"},
    {kShutParent, find, "unable to check file existence: " + kDenied, kNoAccess},
    {{}, makeStrangeDir, "unable to create directory: Invalid path: ftp://"},
    {{{{"RETR", "550 No"}}}, fetch, kFetch + "'f': "},
    {{{{"RETR", "550 No"}}}, fetchVolume, kFetch + "'p/f': "}};

class FtpTransport : public FtpRig {};

// Catches: a failure that is lost or told as another one, a hang, half a file left somewhere, a
// password in the log.
TEST_F(FtpTransport, TellsFailuresWithTheirClass) {
    for (const Failing& row : kFailing) {
        SCOPED_TRACE(row.failure);
        ScriptedFtpServer server(row.script);
        const auto ftp = transport(server.url("/d"), "root", kPassword, row.isPassive, 1);
        try {
            row.operation(*ftp);
            ADD_FAILURE() << "no failure\n" << server.commands();
        } catch (const TransportException& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(row.failure)) << server.commands();
            EXPECT_EQ(row.status, failure.status()) << failure.what();
        }
    }
    EXPECT_FALSE(log_.holds(kPassword));
}

TEST_F(FtpTransport, TellsThatNobodyIsThere) {
    const auto ftp = transport("ftp://127.0.0.1:1", "root", kPassword);
    try {
        list(*ftp);
        FAIL();
    } catch (const TransportException& failure) {
        EXPECT_EQ(Status::kNoConnection, failure.status());
    }
    EXPECT_EQ("tRepositoryFtp::GetFileSize not implemented",
              messageOf([&] { ftp->GetFileSize("f"); }));
    EXPECT_EQ(0, ftp->GetCreationDate("f").GetDateTime());
}

// Catches: a run that waits for a dead server as long as the biggest archive may take.
TEST_F(FtpTransport, WaitsForNoSilentServer) {
    tFtpConnection::s_silenceLimit = 1;
    const FtpScript silent[] = {
        {{{"USER", "-"}}}, {{{"RETR", "-"}}}, {{{"transfer", "-"}}}, {{{"stall", "-"}}, "half"}};
    for (const FtpScript& script : silent) {
        ScriptedFtpServer server(script);
        const auto begin = std::chrono::steady_clock::now();
        const auto ftp = transport(server.url("/d"), "root", kPassword);
        EXPECT_EQ("unable to read file f", messageOf([&] { read(*ftp); }));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    }
    tFtpConnection::s_silenceLimit = 600;
}

// The request stays for good, so a child gets it, as soon as the server has heard a command.
void stopAt(const string& command, ScriptedFtpServer& server, void (*operation)(Transport&),
            Transport& ftp) {
    std::thread stop([&] {
        while (server.commands().find(command) == string::npos) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        // Its answer is there as well, then.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        terminateProgram();
    });
    EXPECT_THROW(operation(ftp), MigrationTerminatedException);
    stop.join();
}

// Catches: a run that hears a request to stop when the biggest archive is there, one that does not
// undo anything any more, and half a file that it leaves.
TEST_F(FtpTransport, HeedsARequestToStop) {
    const auto stopped = [](bool isUpload) {
        {
            ScriptedFtpServer server(isUpload ? FtpScript{{{"SIZE", "550 None"}, {"transfer", "-"}}}
                                              : FtpScript{{{"RETR", "-"}}});
            const auto ftp = transport(server.url("/d"), "root", kPassword);
            if (isUpload) {
                stopAt("STOR", server, write, *ftp);
            } else {
                stopAt("RETR", server, read, *ftp);
                ftp->Delete("f");
            }
            EXPECT_THAT(server.commands(), testing::EndsWith("DELE f\n"));
        }
        _exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(stopped(false), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(stopped(true), testing::ExitedWithCode(0), "");
}

// Catches: a restore that fails since unpacking one archive took longer than a server waits, and a
// server that is asked again and again.
TEST_F(FtpTransport, ComesBackToAServerThatWentForALittle) {
    for (const char* const farewell : {"421 Idle", ""}) {
        ScriptedFtpServer server(FtpScript{{{"second DELE f", farewell}}});
        const auto ftp = transport(server.url("/d"), "root", kPassword);
        ftp->Delete("f");
        ftp->Delete("f");
        const string login = "USER root\nPASS s3cr#t?\nPWD\nCWD d\nDELE f\n";
        EXPECT_EQ(login + "DELE f\n" + login, server.commands());
    }
    ScriptedFtpServer full(FtpScript{{{"greeting", "421 Full"}}});
    EXPECT_NE("", messageOf([&] { list(*transport(full.url("/"), "root", kPassword)); }));
    EXPECT_EQ("", full.commands());
}

// Catches: a deletion in the directory of the operation before.
TEST_F(FtpTransport, GoesAgainToAServerThatHidesItsDirectory) {
    ScriptedFtpServer server(FtpScript{{{"PWD", "500 No"}}});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    ftp->Delete("a/f");
    ftp->Delete("b/f");
    EXPECT_THAT(server.commands(), HasSubstr("PWD\nCWD d\nCWD a\nDELE f\nQUIT\nUSER root\n"));
    EXPECT_THAT(server.commands(), testing::EndsWith("PWD\nCWD d\nCWD b\nDELE f\n"));
}

// Catches: a server or a proxy of the environment that gets backups sent to another host, a
// directory that is there and fails, and commands that are sent from another directory than their
// name stands in.
TEST_F(FtpTransport, SendsItsCommandsWhereTheyBelong) {
    const ScopedVariable proxy("ftp_proxy", "http://127.0.0.1:1");
    ScriptedFtpServer server({{{"MKD", "521 It is there"}, {"QUIT", "-"}}, "x\r\n", "192,0,2,1"});
    const auto begin = std::chrono::steady_clock::now();
    {
        const auto ftp = transport(server.url("/d"), "root", kPassword);
        ftp->CreateDir("a b/c#;?%/");
        list(*ftp);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    EXPECT_THAT(server.commands(),
                testing::StartsWith("USER root\nPASS s3cr#t?\nPWD\nCWD d\nCWD a b\nMKD c#;?%\nCWD "
                                    "/\nCWD /\nCWD d/a b/c#;?%\n"
                                    "CWD /\nCWD d\nPASV\nTYPE A\nNLST\n"));
    const string lines[] = {"Transport: Create dir a b/c#;?%/",
                            "Ftp init url " + server.url("/d/a b/c#;?%"),
                            "Ftp create dir",
                            "Ftp check dir exist",
                            "Transport: List dir ",
                            "Ftp list dir",
                            "End ftp list dir"};
    EXPECT_THAT(log_.lines, testing::IsSupersetOf(lines));
}

// Catches: a login that is cut at its colon, one that ends the URL, and one that is two commands.
TEST_F(FtpTransport, LogsInAsWhoeverItIs) {
    const std::string login = "a:b/c@d%41#?e f";
    ScriptedFtpServer server({});
    list(*transport(server.url("/"), login, "p:q@r/s t"));
    EXPECT_THAT(server.commands(), testing::StartsWith("USER " + login + "\nPASS p:q@r/s t\n"));
    EXPECT_FALSE(log_.holds("p:q@r"));
    EXPECT_TRUE(log_.holds("PASS ***"));
    const auto cunning = transport(server.url("/"), "root\r\nDELE f", "");
    EXPECT_EQ("unable to list directory: a line break in the login or the password",
              messageOf([&] { list(*cunning); }));
}

TEST_F(FtpTransport, TakesTheNamesOfAnyListing) {
    ScriptedFtpServer server({{},
                              "/d/a\r\n../x\r\n.\r\n..\r\nb\x1b[2J\r\nc d\n\r\n/d/e/\n" +
                                  std::string(1 << 20, 'n') + "\nlast"});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    std::vector<std::string> names;
    ftp->ListDir("", names);
    EXPECT_THAT(names, testing::ElementsAre("a", "x", "c d", "last"));
    EXPECT_TRUE(ftp->IsExist("c d"));
    EXPECT_FALSE(ftp->IsExist("b"));
}

TEST_F(FtpTransport, TakesARefusalToListNothing) {
    ScriptedFtpServer server({{{"NLST", "550 No files found"}}, "total 0\r\n"});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    list(*ftp);
    EXPECT_FALSE(ftp->IsExist("f"));
}

TEST_F(FtpTransport, SkipsEntriesWithoutAName) {
    ScriptedFtpServer server({{},
                              "total 8\n-rw-r--r-- 1 u g 12 Nov 23 13:15 a\x01\n"
                              "-rw-r--r-- 1 u g 13 Nov 23 13:15 /d/b\n"});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    std::vector<FileInfo> entries;
    ftp->ListDirEx("", entries);
    ASSERT_EQ(1U, entries.size());
    EXPECT_EQ("b", entries[0].name);
    EXPECT_EQ(13U, entries[0].size);
    EXPECT_THAT(log_.lines, testing::IsSupersetOf({"Unable to get file info from line 'total 8'",
                                                   "Unable to get full name for file name 'a\x01'. "
                                                   "Skip."}));
}

// Catches: an archive that is fetched again for each part of it, and a disk full of old ones.
TEST_F(FtpTransport, KeepsWhatTheNextMayNeed) {
    ScriptedFtpServer server({{}, "content"});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    const std::string place = ftp->GetLocalDirFiles("p", {"a.tgz", "b.tgz"});
    EXPECT_EQ(place, ftp->GetLocalDirFiles("p", {"a.tgz"}));
    EXPECT_EQ("content", contentOf(place + "/a.tgz"));
    EXPECT_FALSE(std::filesystem::exists(place + "/b.tgz"));
    const std::string commands = server.commands();
    EXPECT_EQ(commands.find("RETR a.tgz"), commands.rfind("RETR a.tgz"));
    const std::string file = ftp->GetLocalFile("p/a.tgz");
    EXPECT_EQ("content", contentOf(file));
    EXPECT_EQ("Unable to download remote file 'p/a.tgz': Local file '" + file + "' already exist",
              messageOf([&] { ftp->GetLocalFile("p/a.tgz"); }));
}

// Catches: a link in an unpacked archive by which a file of root's own leaves the machine.
TEST_F(FtpTransport, SendsNoLinks) {
    ScriptedFtpServer server({});
    const auto ftp = transport(server.url("/d"), "root", kPassword);
    const std::string place = ftp->GetReceivingDir() + "in";
    std::filesystem::create_directory(place);
    std::filesystem::create_symlink("/etc/passwd", place + "/link");
    EXPECT_EQ("unable to send directory to repository: '" + place +
                  "/link' is neither a file nor a directory",
              messageOf([&] { ftp->ReceiveDir("in"); }));
    EXPECT_EQ("Path is absolute: /in", messageOf([&] { ftp->ReceiveDir("/in"); }));
    EXPECT_THAT(server.commands(), testing::Not(HasSubstr("STOR")));
}

// Catches: the last bytes of a file that a full disk took, told as success.
TEST_F(FtpTransport, TellsOfAFullDisk) {
    ScriptedFtpServer server({{}, "content"});
    tFtpConnection connection(true, 30);
    connection.Init(server.url("/f"), "root", kPassword);
    const string full = dir_.path("full");
    std::filesystem::create_symlink("/dev/full", full);
    EXPECT_EQ("Failed writing received data to disk/application",
              messageOf([&] { connection.DownloadFile(full); }));
    EXPECT_FALSE(std::filesystem::is_symlink(full));
    std::filesystem::create_symlink("/dev/full", full);
    tFtpOutStream out({&connection, server.url("/f"), "root", kPassword, "f"}, full);
    out.open();
    out << "content";
    EXPECT_EQ("unable to write file f: No space left on device", messageOf([&] { out.close(); }));
    EXPECT_THAT(server.commands(), testing::Not(HasSubstr("STOR")));
}

// Catches: a rollback that removes what was there, since the server did not let it be looked at.
TEST_F(FtpTransport, TakesNothingForNewThatItCannotSee) {
    ScriptedFtpServer server({{{"CWD d/a", "550 No"}}, "a\r\n"});
    tRepository repository(server.url("/d"), "root", kPassword, "", true);
    repository.BeginTransaction();
    repository.CreateDir("a");
    repository.RollbackTransaction();
    EXPECT_THAT(server.commands(), testing::Not(HasSubstr("RMD")));
}

// Catches: half a file that stands where a whole one is looked for, and an old one that is lost.
TEST_F(FtpTransport, LeavesNoHalfFile) {
    for (const char* size : {"550 None", "213 5", "500 What?"}) {
        ScriptedFtpServer server(FtpScript{{{"SIZE", size}, {"transfer", "452 Full"}}});
        const auto ftp = transport(server.url("/d"), "root", kPassword);
        EXPECT_EQ("unable to write file a/f: Transferred a partial file",
                  messageOf([&] { write(*ftp); }));
        const bool isGone = server.commands().find("DELE f") != string::npos;
        EXPECT_EQ(string(size) == "550 None", isGone) << server.commands();
    }
}

TEST_F(FtpTransport, TellsThatItCannotKeepLocalFiles) {
    configuration_.set("DUMP_TMP_D", dir_.path("none"));
    const auto ftp = transport("ftp://127.0.0.1:1", "root", kPassword);
    EXPECT_THROW(ftp->GetFile("f"), TransportException);
    EXPECT_THROW(ftp->PutFile("f"), TransportException);
    EXPECT_THROW(ftp->GetLocalDirFiles("d", {"f"}), TransportException);
}

}  // namespace
}  // namespace zelvo
