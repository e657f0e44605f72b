// bench-restore DEPLOYER READ_DUMP SCHEMA DIRECTORY: whole restores beside a bare loop that runs
// the very same commands, and beside each other. Runs in a panel whose utilities do nothing.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "command_log.h"
#include "dump.h"
#include "measure.h"
#include "whole_restore.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;
using bench::Restore;
using bench::Shape;

constexpr int kRounds = 3;
// In kilobytes: what a restore may take besides its dump.
constexpr double kRestoreMemory = 32 * 1024;

void writeDomains(const fs::path& session, int count) {
    bench::writeDump(session / "restore.xml", count);
}

void writeZone(const fs::path& session, int count) {
    bench::writeZoneDump(session / "restore.xml", count);
}

void writeSites(const fs::path& session, int count) {
    bench::writeSitesDump(session / "restore.xml", count);
    std::ofstream(session / "index.html") << "Welcome\n";
    bench::costOfProgram({"tar", "-cf", session / "site.tar", "-C", session, "index.html"});
}

void writeMail(const fs::path& session, int count) {
    bench::writeMailDump(session / "restore.xml", count);
}

void writeList(const fs::path& session, int count) {
    bench::writeListDump(session / "restore.xml", count);
}

void writeServer(const fs::path& session, int count) {
    bench::writeServerDump(session / "restore.xml", count);
}

constexpr Shape kSites = {"200 sites", writeSites, 200};
constexpr Shape kSmall = {"2,000 domains", writeDomains, 2000};
constexpr Shape kBig = {"20,000 domains", writeDomains, 20000};
constexpr Shape kSmallZone = {"2,000 records", writeZone, 2000};
constexpr Shape kBigZone = {"20,000 records", writeZone, 20000};

constexpr Shape kServer = {"2,000 templates and 500 pool items", writeServer, 2000};
constexpr Shape kMail = {"5,000 mail users", writeMail, 5000};
constexpr Shape kSmallList = {"10,000 members", writeList, 10000};
constexpr Shape kBigList = {"100,000 members", writeList, 100000};

// What the panel has of site applications is asked once in a run at most.
void checkAskedOnce(const std::string& log) {
    for (const char* question : {"siteapp.php --info-packages-xml", "siteapp-item.php --list"}) {
        if (bench::countCommands(log, question) > 1) {
            throw std::runtime_error(std::string("asked again: ") + question);
        }
    }
}

// A restore to the bare loop over its commands. kind: what is restored, for the heading.
bool compareToBare(const std::string& deployer, const fs::path& directory, const Shape& shape,
                   const std::string& kind, const std::string& subject) {
    const Restore restore(deployer, directory, shape);
    Comparison toBare(std::string(shape.name) + ", to the bare loop");
    for (int round = 0; round < 2 * kRounds; ++round) {
        const Cost cost = restore.measure();
        toBare.add(cost, restore.measureBare());
    }
    checkAskedOnce(restore.log());
    bench::tellHeading(
        kind + " (" + std::to_string(bench::countCommands(restore.log())) + " commands)", subject,
        "a bare loop of posix_spawn and waitpid with the same commands");
    return toBare.tellTime(1.15);
}

// A restore to one of a tenth.
bool compareGrowth(const std::string& deployer, const fs::path& directory, const Shape& smallShape,
                   const Shape& bigShape, const std::string& kind, const std::string& subject) {
    const Restore small(deployer, directory, smallShape);
    const Restore big(deployer, directory, bigShape);
    Comparison bigToSmall(std::string(bigShape.name) + ", to the " + smallShape.name);
    for (int round = 0; round < kRounds; ++round) {
        const Cost before = small.measure();
        const Cost cost = big.measure();
        bigToSmall.add(cost, mean(before, small.measure()));
    }
    bench::tellHeading(
        kind, subject,
        std::string("the restores of ") + smallShape.name + " right before and after");
    return bigToSmall.tellTime(10.5);
}

bool compareParts(const std::string& deployer, const fs::path& directory) {
    const std::string idle = "deployer --deploy-dump with utilities that do nothing";
    bool isOk = compareToBare(deployer, directory, kSites, "Domains with full hosting",
                              idle + " and a real tar");
    isOk =
        compareToBare(deployer, directory, kServer, "A server and a client's pool", idle) && isOk;
    isOk = compareToBare(deployer, directory, kMail, "Mail users of a domain", idle) && isOk;
    isOk = compareGrowth(deployer, directory, kSmallZone, kBigZone, "A DNS zone",
                         "deployer --deploy-dump of one domain; its list of 20,000 records is made "
                         "and logged, but is too long for a program to be started with it") &&
           isOk;
    return compareGrowth(deployer, directory, kSmallList, kBigList, "A mail list",
                         idle + ", of one list") &&
           isOk;
}

bool compareDomains(const std::string& deployer, const std::string& readDump,
                    const std::string& schema, const fs::path& directory) {
    const Restore small(deployer, directory, kSmall);
    const Restore big(deployer, directory, kBig);
    Comparison smallToBare("2,000 domains, to the bare loop");
    Comparison bigToBare("20,000 domains, to the bare loop");
    Comparison bigToSmall("20,000 domains, to the 2,000");
    Comparison bigToTree("20,000 domains less 32 MB, to the tree");
    Cost bigCost;
    for (int round = 0; round < kRounds; ++round) {
        const Cost before = small.measure();
        bigCost = big.measure();
        const Cost after = small.measure();
        // Small ones on both sides, as a machine becomes slower or faster in the meantime.
        bigToSmall.add(bigCost, mean(before, after));
        smallToBare.add(after, small.measureBare());
    }
    // Once will do for what lasts so long.
    bigToBare.add(bigCost, big.measureBare());
    bigToTree.add(bigCost, bench::costOfProgram({readDump, big.dump(), schema}));

    bench::tellHeading(
        "A whole restore (" + std::to_string(bench::countCommands(small.log())) + " and " +
            std::to_string(bench::countCommands(big.log())) + " commands)",
        "deployer --deploy-dump with utilities that do nothing",
        "a bare loop of posix_spawn and waitpid with the same commands; for \"to the 2,000\" the "
        "restores of 2,000 domains right before and after; for \"to the tree\" a process that "
        "reads and checks the dump and does nothing else");
    bool isOk = smallToBare.tellTime(1.25);
    isOk = bigToBare.tellTime(1.25) && isOk;
    isOk = bigToSmall.tellTime(10.5) && isOk;
    return bigToTree.tellPeak(1.1, kRestoreMemory) && isOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: bench-restore DEPLOYER READ_DUMP SCHEMA DIRECTORY\n", stderr);
        return 2;
    }
    try {
        const bool isOk = compareDomains(argv[1], argv[2], argv[3], argv[4]);
        return compareParts(argv[1], argv[4]) && isOk ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-restore: %s\n", failure.what());
        return 2;
    }
}
