// restorectl as people and scripts use it. What its operations do to a repository is tried where
// they are; here is what it takes, tells and answers.
#include "process.h"
#include "sandbox.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

constexpr char kDumps[] = "/opt/qrd/var/dumps";

// The panel's own repository: a backup of the server, one of a client with that label, and two of
// the client alone, of which the last is broken.
constexpr char kMakeDumps[] = R"(
cd /opt/qrd/var/dumps
backup() {
    mkdir -p "$1/.discovered/b_info_$2"
    printf '%s' "$4" > "$1/b_info_$2.xml"
    echo x > "$1/b_x_$2.tar"
    for item in "GUID_$3" "owner_$3" ownertype_client "objectid_7" size_2048 "status_$5"; do
        : > "$1/.discovered/b_info_$2/$item"
    done
    : > ".discovered/$3_7"
}
backup . 2605041200 guid-s '<migration-dump/>' OK
backup clients/7 2605041200 guid-c '<migration-dump/>' OK
backup clients/7 2606041200 guid-c '<migration-dump/>' OK
backup clients/7 2607041200 guid-c '<migration-dump/>' WRONG-FORMAT
mkdir packed
touch c_2606041200.tgz1 "packed/$(printf 'evil\302\2332J')_2605041200.tgz" packed/a_2605041200.tgz packed/a_2606041200.tgz
)";

class Restorectl : public testing::Test {
  protected:
    Restorectl() { inBox(kMakeDumps); }

    ProcessResult inBox(const std::string& script) {
        return box_.runCommand({"/bin/sh", "-ec", script, Sandbox::restorectl()});
    }
    // words: behind "restorectl backup".
    ProcessResult backup(const std::string& words) { return inBox("\"$0\" backup " + words); }
    std::string dumps() { return inBox(std::string("cd ") + kDumps + " && find | sort").out; }

    Sandbox box_;
};

// Catches: a wrong usage or a failure that a script takes for success, or the other way round.
TEST_F(Restorectl, AnswersByItsExitStatus) {
    const struct {
        const char* words;
        int status;
        const char* told;
    } rows[] = {
        {"list", 0, ""},
        {"", 2, "subcommand is required"},
        {"list --frob", 2, "--frob"},
        {"list --type client", 2, "--type client takes --guid"},
        {"list --type domian --guid g", 2, "domian"},
        {"list --repository ftp://night:secret@h/d", 2, "a password does not belong into a URL"},
        {"rotate --keep -1 --owner o b_info", 2, "--keep"},
        {"rotate --keep 1 b_info", 2, "--owner or --packed"},
        {"export b_info_2605041200.xml --to ftp://h", 2, "has no directory"},
        {"list --repository ''", 2, "the repository is empty"},
        {"list --repository ftps://night:secret@h/d", 2, "begins with ftp://"},
        {"list --type server --guid g", 2, "takes no --guid"},
        {"check --owner o b_info_2605041200.xml", 2, "--owner"},
        {"copy packed/a_2605041200.tgz --to packed", 2, "is a directory"},
        {"export b_info_2605041200.xml --to packed/.tgz", 2, "is no name of an archive"},
        {"export b_info_2605041200.xml --to packed/x.", 2, "is no name of an archive"},
        {"list --repository /none", 1, "repository '/none' cannot be opened"},
        {"list --credentials-file /none", 1, "credentials file '/none' cannot be read"},
        {"show clients/7/b_info_2601041200.xml", 1, "b_info_2601041200"},
        {"check --stored clients/7/b_info_2606041200.xml", 0, ""},
        {"delete -n ./b_info_2605041200.xml", 0, ""},
        {"check --stored clients/7/b_info_2607041200.xml", 1, ""},
        {"import --from packed/a_2605041200.tgz --guid guid-c", 1, "a_2605041200.tgz"},
        {"copy packed/a_2606041200.tgz --to ./c_2606041200.tgz", 1, "c_2606041200.tgz1 exists"},
        {"delete '[b_info_2605041200.xml,x]'", 2, "[b_info_2605041200.xml,x]' is ambiguous"},
        {"delete ./[b_info_2605041200.xml,x] clients/7/b_x_2605041200.tar1", 1, "tar1"},
        {"delete packed/none_2605041200.tgz packed/a_2605041200.tgz", 1, "none_2605041200"},
        {"list > /dev/full", 1, "standard output could not be written"},
    };
    for (const auto& row : rows) {
        const ProcessResult result =
            inBox(std::string("cd ") + kDumps + "; \"$0\" backup " + row.words);
        EXPECT_EQ(result.exitStatus, row.status) << row.words << result.err;
        EXPECT_THAT(result.err, HasSubstr(row.told)) << row.words;
        EXPECT_EQ(result.err.empty(), row.told[0] == '\0') << row.words << result.err;
    }
    // One that fails does not stop the next.
    EXPECT_THAT(dumps(), testing::Not(HasSubstr("a_2605041200.tgz")));
}

TEST_F(Restorectl, ListsForPeopleAndForMachines) {
    EXPECT_EQ(
        backup("list --status").out,
        R"(DATE              SIZE     OWNER IS  OWNER   OBJECT  PATH                             STATUS
2026-05-04 12:00  2.0 KiB  client    guid-s  guid-s  b_info_2605041200.xml            OK
2026-05-04 12:00  2.0 KiB  client    guid-c  guid-c  clients/7/b_info_2605041200.xml  OK
2026-06-04 12:00  2.0 KiB  client    guid-c  guid-c  clients/7/b_info_2606041200.xml  OK
2026-07-04 12:00  2.0 KiB  client    guid-c  guid-c  clients/7/b_info_2607041200.xml  WRONG-FORMAT
)");
    EXPECT_EQ(backup("list --packed packed --mask 'evil.*'").out,
              "DATE              SIZE  PATH\n"
              "2026-05-04 12:00  0 B   packed/evil\\xC2\\x9B2J_2605041200.tgz\n");
    EXPECT_EQ(backup("usage --type client --guid guid-c --json").out, R"({
  "usage": {
    "size": 6144
  },
  "failures": []
}
)");
}

// Catches: a dry run that changes something, and one that tells what does not come to pass.
TEST_F(Restorectl, RemovesWhatItsDryRunTells) {
    const std::string before = dumps();
    const std::string rotation = "rotate --keep 0 --owner guid-c clients/7/b_info --json ";
    const std::string deletion = "delete clients/7/b_info_2605041200.xml packed/a_2606041200.tgz ";
    const std::string rotated = backup(rotation + "-n").out;
    EXPECT_EQ(rotated, R"({
  "backups": [
    {
      "name": "b_info_2607041200.xml",
      "action": "kept",
      "reason": "The backup : b_info_2607041200.xml is not valid!"
    },
    {
      "name": "b_info_2605041200.xml",
      "action": "kept",
      "reason": "is part of another backup"
    },
    {
      "name": "b_info_2606041200.xml",
      "action": "would be removed",
      "reason": "is older than the newest 0"
    }
  ],
  "failures": []
}
)");
    const ProcessResult deleted = backup(deletion + "--dry-run");
    EXPECT_EQ(deleted.exitStatus, 1);
    EXPECT_EQ(dumps(), before);
    const auto done = [](std::string text) {
        for (auto at = text.find("would be "); at != std::string::npos;
             at = text.find("would be ")) {
            text.erase(at, 9);
        }
        return text;
    };
    EXPECT_EQ(backup(rotation).out, done(rotated));
    EXPECT_EQ(backup(deletion).exitStatus, 1);
    EXPECT_THAT(dumps(), HasSubstr("./clients/7/b_x_2605041200.tar\n"));
    EXPECT_THAT(dumps(), testing::Not(testing::AnyOf(HasSubstr("a_2606041200.tgz"),
                                                     HasSubstr("clients/7/b_x_2606041200.tar"))));
}

// Catches: a variable of the environment that wins over what was said.
TEST_F(Restorectl, WorksWhereItIsTold) {
    const std::string away =
        "mkdir -p /tmp/away; RESTORECTL_REPOSITORY=/tmp/away \"$0\" backup list";
    EXPECT_THAT(inBox(away).out, testing::Not(HasSubstr("guid")));
    EXPECT_THAT(inBox(away + " --repository " + kDumps).out, HasSubstr("guid-s"));
}

// Catches: a password that a child of the program or anybody else on the machine can read.
TEST_F(Restorectl, KeepsPasswordsToItself) {
    const ProcessResult open =
        inBox("umask 022; echo password=s3cret > file; \"$0\" backup list --credentials-file file");
    EXPECT_EQ(open.exitStatus, 1);
    EXPECT_THAT(open.err, HasSubstr("'file' is open to others than its owner"));
    const ProcessResult told = inBox(
        "printf '#!/bin/sh\\nenv >&2; exit 1' > /opt/qrd/RMK/backup_sign\n"
        "export RESTORECTL_LOGIN=night RESTORECTL_PASSWORD=s3cret "
        "RESTORECTL_OTHER_PASSWORD=s3cret\n"
        "\"$0\" backup export -v b_info_2605041200.xml --to /tmp/none/");
    EXPECT_EQ(told.exitStatus, 1);
    EXPECT_THAT(told.err, HasSubstr("PATH="));
    EXPECT_THAT(told.err, testing::Not(HasSubstr("s3cret")));
}

}  // namespace
