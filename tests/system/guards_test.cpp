// Every guard of a restore: the example company, and the example server, with one failing call at a
// time. What each failure costs stands beside the call in guards.txt of the example, so this file
// names no object and no utility. One call for each kind that it has; GUARDS=all in the environment
// takes them all.

#include "example_company.h"
#include "file_tree.h"
#include "outcome.h"
#include "scenario.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <regex>
#include <set>
#include <stdexcept>

namespace {

constexpr int kShards = 4;
const std::string kCompany = "hosting-company";
const std::string kServer = "whole-server";

std::string fileOf(const std::string& example, const std::string& name) {
    return sourceFile("examples/" + example + "/" + name);
}

// How an object that did not come back is told, by the type of the object.
struct Outer {
    std::string type;
    std::string code;
};
const Outer kOuters[] = {{"client ", "FailedClientDeployment"},
                         {"reseller ", "FailedClientDeployment"},
                         {"domain ", "FailedDomainDeployment"},
                         {"subdomain ", "FailedSubdomainDeployment"},
                         {"mailname ", "FailedMailuserDeployment"},
                         {"database user ", "FailedDatabaseUserDeployment"},
                         {"database ", "FailedDatabaseDeployment"},
                         {"web user ", "FailedWebuserDeployment"},
                         {"protected directory ", "FailedProtDirDeployment"}};

const std::string kSaid = "ExecCmd::Failed";

struct Row {
    std::string object;   // its path; empty for the run
    std::size_t section;  // a heading of its own for each
    std::string reach;
    Lines instead;        // first options of what is made all the same
    std::string code;     // under which it is told, if not as the object
    std::string needs;    // how the call begins that takes this one along
    std::string refused;  // the code that is told then
    int counts;           // in the status: one more, one less, or as ever
    Lines parts;          // what is tried in its place
    std::string call;     // or the code that is told

    bool isCall() const { return reach != "told"; }
    bool endsObject() const { return reach == "rest" || reach == "owner"; }
    bool isTold() const { return reach != "nothing" && reach != "log"; }
    bool tellsWhatItSaid() const { return isTold() && (code.empty() || code.ends_with(kSaid)); }
    // It is its answer that counts.
    bool isAsked() const { return reach == "owner" || (isTold() && !tellsWhatItSaid()); }
    // What stands in the debug log of the failure, if anything does.
    std::string logged() const {
        return reach == "log" && !code.empty() ? code : " failed with return code 3.";
    }

    std::string ownName() const { return object.substr(object.rfind('/') + 1); }
    std::string outerCode() const {
        for (const Outer& outer : kOuters) {
            if (ownName().starts_with(outer.type)) return outer.code;
        }
        return "";
    }
    bool isDomain() const { return ownName().starts_with("domain "); }
    // The domains of an account that failed are tried all the same, and so are the next stages of
    // the run.
    bool takesAlong(const Row& other) const {
        if (outerCode() == "FailedClientDeployment" || object.empty()) {
            return other.section == section;
        }
        return other.object == object || other.object.starts_with(object + "/");
    }
};

struct Rules {
    std::vector<Row> rows;
    std::string status;
};

// The utility with its verb and the object, in its domain if it says so; of this the utility with
// its verb, and the object; the first option behind.
std::smatch headOf(const std::string& call) {
    static const std::regex form(
        R"((?:[A-Z_]+=(?:'(?:\\.|[^'\\])*'|[^ ]*) )*((\S+ \S+)(?: (\S+))?(?: -domain \S+)?)(?: (-\S+))?.*)");
    std::smatch head;
    if (!std::regex_match(call, head, form)) throw std::runtime_error("no call: " + call);
    return head;
}

// Whole calls as they are, options as calls of the same utility on the same object.
Lines wholeCalls(Lines parts) {
    const std::string head = headOf(parts.at(0))[1];
    for (std::string& part : parts) {
        if (part.starts_with("-")) part.insert(0, head + " ");
    }
    return parts;
}

Row rowOf(const std::string& line, const std::string& object, std::size_t section) {
    static const std::regex form(
        R"((\w+)(?: but ([-\w ]+))?(?: as ([\w:> ]+))?(?:, needs ([^,]+)(?:, else (\S+))?)?(?:, one (?:(more)|less))?)");
    const auto bar = line.find(" | ");
    const std::string reach = line.substr(0, bar);
    std::smatch word;
    if (bar == std::string::npos || !std::regex_match(reach, word, form)) {
        throw std::runtime_error("no rule: " + line);
    }
    Row row{object, section, word[1], {}, word[3], word[4], word[5], 0, {}, ""};
    if (reach.find(", one ") != std::string::npos) row.counts = word[6].matched ? 1 : -1;
    row.instead = linesOf(replaceAll(word[2], " ", "\n"));
    const std::string call = line.substr(bar + 3);
    const auto split = call.find(" || ");
    row.call = replaceAll(call.substr(0, split), " | ", " ");
    if (split != std::string::npos || row.reach == "parts") {
        const std::string parts = split == std::string::npos ? call : call.substr(split + 4);
        row.parts = wholeCalls(linesOf(replaceAll(parts, " | ", "\n")));
    }
    return row;
}

Rules readRules(const std::string& of) {
    Rules rules;
    std::string object;
    std::size_t section = 0;
    for (const std::string& line : linesOf(fileOf(of, "guards.txt"))) {
        if (line.empty() || line[0] == '#') continue;
        if (line.starts_with("status: ")) {
            rules.status = line.substr(8);
        } else if (line[0] == '[') {
            object = line.substr(1, line.size() - 2);
            ++section;
        } else {
            rules.rows.push_back(rowOf(line, object, section));
        }
    }
    return rules;
}

// What a failure of one row makes of all rows.
class Failure {
  public:
    Failure(const Rules& rules, std::size_t index)
        : rows_(rules.rows), failed_(rows_[index]), index_(index), lost_(rows_.size()) {
        for (std::size_t i = index + 1; i < rows_.size(); ++i) {
            lost_[i] =
                (failed_.endsObject() && failed_.takesAlong(rows_[i])) || hasLost(rows_[i].needs);
        }
    }

    std::string calls() const {
        std::string text;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            // A utility that refuses was called.
            const bool isMade = !lost_[i] || rows_[i].refused == kSaid;
            if (rows_[i].isCall() && isMade) text += rows_[i].call + "\n";
            if (i == index_) text += insteadOf(failed_);
        }
        return text;
    }

    Lines codes() const {
        Lines codes{"success"};
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (i == index_ && failed_.isTold()) codes.push_back(told());
            if (lost_[i] && !rows_[i].refused.empty()) {
                codes.push_back(rows_[i].object + ": " + rows_[i].refused);
            }
            if (!rows_[i].isCall() && !lost_[i]) {
                codes.push_back(rows_[i].object + ": " + rows_[i].call);
            }
        }
        return codes;
    }

  private:
    bool hasLost(const std::string& needed) const {
        for (std::size_t i = index_; !needed.empty() && i < rows_.size(); ++i) {
            if ((i == index_ || lost_[i]) && rows_[i].call.starts_with(needed)) return true;
        }
        return false;
    }

    std::string insteadOf(const Row& row) const {
        std::string text = joined(row.parts);
        for (const std::string& option : row.instead) {
            for (const Row& each : rows_) {
                if (!each.isCall() || each.object != row.object) continue;
                const std::smatch head = headOf(each.call);
                const bool isOfObject = row.ownName().ends_with(" " + head.str(3)) &&
                                        head.str(2).ends_with(" --update");
                if (isOfObject && head[4] == option) text += each.call + "\n";
            }
        }
        return text;
    }

    std::string told() const {
        if (failed_.reach == "owner") return ": UnknownParentClassObject";
        const std::string outer = failed_.reach == "rest" ? failed_.outerCode() : "";
        const std::string code = (outer.empty() ? "" : outer + " > ") + kSaid;
        return failed_.object + ": " + (failed_.code.empty() ? code : failed_.code);
    }

    const std::vector<Row>& rows_;
    const Row& failed_;
    std::size_t index_;
    std::vector<bool> lost_;
};

std::string statusAfter(const Rules& rules, const Row& failed) {
    int accounts = 0;
    int allAccounts = 0;
    int domains = 0;
    int allDomains = 0;
    std::sscanf(rules.status.c_str(), "%d of %d accounts, %d of %d domains", &accounts,
                &allAccounts, &domains, &allDomains);
    (failed.isDomain() ? domains : accounts) += failed.counts;
    return std::to_string(accounts) + " of " + std::to_string(allAccounts) + " accounts, " +
           std::to_string(domains) + " of " + std::to_string(allDomains) + " domains";
}

void prepareExample(Sandbox& box, const std::string& name) {
    box.setup(fileOf(name, "panel-before.txt"));
    addExampleArchives(box, name);
    box.withClients();
    box.writeDump(fileOf(name, "restore.xml"));
}

void restoreExample(Sandbox& box, const std::string& name, const std::string& faults) {
    prepareExample(box, name);
    box.faults(faults);
    box.deploy();
    // Keys, passwords and half an archive were written there.
    EXPECT_EQ(treeOf(box, "/opt/qrd/RMK/tmp"), "./ root:root 711\n");
}

// A call that fails does its work first, so that the panel takes what comes later; but where it is
// asked for something there must be no answer.
std::string faultOf(const Row& row, int number) {
    return "call " + std::to_string(number) + ": " + (row.isAsked() ? "" : "after; ") +
           "stderr 'no space\\n'; exit 3\n";
}

// What is tried again is made up again.
std::string withoutNumbers(const std::string& text) {
    return std::regex_replace(text, std::regex("RANDOM[0-9]+"), "RANDOM");
}

// What a restore leaves that nothing hindered.
void expectCallsOfGuards(Sandbox& box, const std::string& name) {
    const Rules rules = readRules(name);
    std::string calls;
    Lines codes{"success"};
    for (const Row& row : rules.rows) {
        if (row.isCall()) {
            calls += row.call + "\n";
        } else {
            codes.push_back(row.object + ": " + row.call);
        }
    }
    EXPECT_EQ(withoutNumbers(callsOf(box)), calls);
    EXPECT_EQ(codesOf(box), codes);
    EXPECT_TRUE(statusOf(box).starts_with(rules.status)) << statusOf(box);
    expectNoPasswordInArguments(box);
}

// Catches: content in a wrong place, or with another owner, group or mode than is due to it.
void expectCompanyRestored(Sandbox& box) {
    expectCallsOfGuards(box, kCompany);
    EXPECT_EQ(treeOf(box, "/opt/qrd/var/vhosts") + "\n" +
                  treeOf(box, "/opt/qrd/var/mailnames/knigi.example"),
              example("sites-after.txt"));
}

TEST(Example, ServerMakesTheCallsOfItsGuards) {
    Sandbox box;
    restoreExample(box, kServer, "");
    expectCallsOfGuards(box, kServer);
}

TEST(Example, CompanyMakesTheCallsOfItsGuards) {
    Sandbox box;
    restoreExample(box, kCompany, "");
    expectCompanyRestored(box);
}

// The same archives, some of them compressed or cut into volumes, without --no-repository.
TEST(Example, ComesFromARepositoryToo) {
    Sandbox box;
    prepareExample(box, kCompany);
    const ProcessResult cutting =
        box.runCommand({"/bin/sh", "-ec", "cd " + Sandbox::sessionPath() + R"(
volumes() {
    split -a 1 -b "$2" "$1" "$1 \$(id)'@"; rm "$1"
    for v in "$1 "*; do printf '<content-file>%s</content-file>' "${v##*/}"; done > list
    # In a replacement "&" and "" have meanings.
    perl -0pi -e 'BEGIN { local @ARGV = "list"; $l = <> } s|<content-file>\Q$ENV{n}\E</content-file>|$l|g' restore.xml
}
compress() { gzip -n "$1"; mv "$1.gz" "$1"; }
compress knigi.example/docroot.tar
compress knigi.example/irina.tar
n=vhost.tar volumes boreal.example/vhost.tar 7000
n=irina.tar volumes knigi.example/irina.tar 100
rm list)"});
    ASSERT_EQ(cutting.exitStatus, 0) << cutting.err;
    box.forgetJournal();
    box.succeeds({"--deploy-dump", "--session-path", Sandbox::sessionPath()});
    EXPECT_EQ(countOf(box.logText(), "Executing utility: perl -f "), 2);
    expectCompanyRestored(box);
}

// A night's backup that went to an FTP server, and from there onto another machine.
TEST(Example, GoesToAnotherMachineThroughRepositories) {
    Sandbox box;
    prepareExample(box, kCompany);
    const ProcessResult bringing =
        box.runCommand({"/bin/sh", "-ec", R"(
cd "$1"; backup=backup_info_2605041200.xml
"$2/examples/make-backup" "$1" "$1/from" 2605041200 guid-1
mkdir store other
/usr/bin/python3 -m pyftpdlib -i 127.0.0.1 -p 2121 -w -d store -u night@shift -P 's3:cr/et' \
    >/dev/null 2>&1 &
trap "kill $!" EXIT
curl -s --retry 60 --retry-connrefused --retry-delay 1 -u night@shift:s3:cr/et ftp://127.0.0.1:2121/
export RESTORECTL_OTHER_PASSWORD=s3:cr/et
store=ftp://night%40shift@127.0.0.1:2121
"$0" backup list --repository from
"$0" backup export --repository from $backup --to $store/
RESTORECTL_PASSWORD=s3:cr/et "$0" backup check --repository $store backup_2605041200.tgz
"$0" backup import --repository other --from $store/backup_2605041200.tgz --guid guid-1
rm -r from store
"$0" backup check --repository other
)",
                        Sandbox::restorectl(), Sandbox::sessionPath(), SOURCE_DIR});
    EXPECT_EQ(bringing.exitStatus, 0) << bringing.err;
    EXPECT_EQ(countOf(bringing.out, "  OK\n"), 2) << bringing.out;
    EXPECT_TRUE(box.succeeds({"--deploy-dump", "--session-path", Sandbox::sessionPath(),
                              "--repository-url", Sandbox::sessionPath() + "/other"})
                    .out.empty());
    expectCompanyRestored(box);
}

// The rows whose failures are tried, with the numbers of their calls.
std::vector<std::pair<std::size_t, int>> chosen(const Rules& rules) {
    const char* const wish = std::getenv("GUARDS");
    const bool isAll = wish != nullptr && std::string(wish) == "all";
    std::vector<std::pair<std::size_t, int>> rows;
    std::set<std::string> kinds;
    int number = 0;
    for (std::size_t i = 0; i < rules.rows.size(); ++i) {
        const Row& row = rules.rows[i];
        if (!row.isCall()) continue;
        ++number;
        const std::smatch head = headOf(row.call);
        // What costs nothing but itself is a table's row.
        const std::string option = row.reach == "log" ? "" : head.str(4);
        const std::string kind = row.outerCode() + " " + head.str(2) + " " + option + " " +
                                 row.reach + joined(row.instead) + row.code + row.needs +
                                 std::to_string(row.counts);
        if (kinds.insert(kind).second || isAll) rows.emplace_back(i, number);
    }
    return rows;
}

class Guards : public ::testing::TestWithParam<std::tuple<std::string, std::size_t>> {};

TEST_P(Guards, CostNoMoreThanTheirOwnPiece) {
    const auto& [name, shard] = GetParam();
    const Rules rules = readRules(name);
    const auto rows = chosen(rules);
    for (std::size_t next = shard; next < rows.size(); next += kShards) {
        const auto [index, number] = rows[next];
        const Row& row = rules.rows[index];
        SCOPED_TRACE("call " + std::to_string(number) + ": " + row.call);
        const Failure failure(rules, index);
        Sandbox box;
        restoreExample(box, name, faultOf(row, number));
        EXPECT_EQ(withoutNumbers(callsOf(box)), failure.calls());
        EXPECT_EQ(codesOf(box), failure.codes());
        // What it said reaches the result where it is told, and the debug log unless it is nothing.
        EXPECT_EQ(countOf(box.resultText(), "no space\n"), row.tellsWhatItSaid() ? 1 : 0);
        EXPECT_EQ(countOf(box.logText(), row.logged() + "\n") > 0,
                  row.reach != "nothing" && !row.isAsked());
        EXPECT_TRUE(statusOf(box).starts_with(statusAfter(rules, row))) << statusOf(box);
    }
}

INSTANTIATE_TEST_SUITE_P(Shard, Guards,
                         ::testing::Combine(::testing::Values(kCompany, kServer),
                                            ::testing::Range<std::size_t>(0, kShards)));

}  // namespace
