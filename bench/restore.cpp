// bench-restore DEPLOYER DIRECTORY: whole restores beside a bare loop that runs the very same
// commands. Runs in a panel whose utilities do nothing.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "command_log.h"
#include "dump.h"
#include "measure.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;

constexpr int kSmall = 2000;
constexpr int kBig = 20000;
// Pairs of small restores before the big one, and as many after it.
constexpr int kPairs = 2;

// Restores of one dump, each in a session of its own.
class Restore {
  public:
    Restore(std::string deployer, const fs::path& directory, int domains)
        : deployer_(std::move(deployer)),
          session_(directory / ("session-" + std::to_string(domains))) {
        dump_ = session_.string() + ".xml";
        bench::writeDump(dump_, domains);
    }

    Cost measure() const {
        fs::remove_all(session_);
        fs::create_directory(session_);
        fs::copy_file(dump_, session_ / "restore.xml");
        const Cost cost = bench::costOfProgram(
            {deployer_, "--deploy-dump", "--no-repository", "--session-path", session_});
        checkVerdict();
        return cost;
    }

    // The commands of the last restore.
    std::vector<bench::BareCommand> commands() const {
        return bench::readCommands(session_ / "migration.log");
    }

  private:
    // A restore that failed early would look fast.
    void checkVerdict() const {
        std::ostringstream result;
        result << std::ifstream(session_ / "migration.result").rdbuf();
        if (result.str().find("status=\"success\"") == std::string::npos ||
            result.str().find("<message") != std::string::npos) {
            throw std::runtime_error("the restore failed: " + result.str());
        }
    }

    std::string deployer_;
    fs::path session_;
    fs::path dump_;
};

Cost runBare(const std::vector<bench::BareCommand>& commands) {
    return bench::costOfChild([&] {
        for (const bench::BareCommand& command : commands) {
            command.run();
        }
    });
}

// What a small restore would have cost at the speed that the machine had for the big one: the bare
// loops tell that, as one is growth times the other by its commands.
Cost withoutDrift(Cost cost, const Cost& bare, const Cost& bigBare, double growth) {
    cost.wall *= bigBare.wall / (bare.wall * growth);
    cost.cpu *= bigBare.cpu / (bare.cpu * growth);
    return cost;
}

bool run(const std::string& deployer, const fs::path& directory) {
    const Restore small(deployer, directory, kSmall);
    const Restore big(deployer, directory, kBig);
    std::vector<bench::BareCommand> smallCommands;
    std::vector<Cost> smallCosts;
    std::vector<Cost> smallBareCosts;
    Comparison smallToBare("2,000 domains, to the bare loop");
    const auto measureSmall = [&] {
        for (int pair = 0; pair < kPairs; ++pair) {
            smallCosts.push_back(small.measure());
            smallCommands = small.commands();
            smallBareCosts.push_back(runBare(smallCommands));
            smallToBare.add(smallCosts.back(), smallBareCosts.back());
        }
    };
    measureSmall();
    const Cost bigCost = big.measure();
    const std::vector<bench::BareCommand> bigCommands = big.commands();
    const Cost bigBareCost = runBare(bigCommands);
    Comparison bigToBare("20,000 domains, to the bare loop");
    bigToBare.add(bigCost, bigBareCost);
    measureSmall();
    Comparison bigToSmall("20,000 domains, to the 2,000");
    const double growth =
        static_cast<double>(bigCommands.size()) / static_cast<double>(smallCommands.size());
    for (std::size_t i = 0; i < smallCosts.size(); ++i) {
        bigToSmall.add(bigCost,
                       withoutDrift(smallCosts[i], smallBareCosts[i], bigBareCost, growth));
    }

    bench::tellHeading(
        "A whole restore (" + std::to_string(smallCommands.size()) + " and " +
            std::to_string(bigCommands.size()) + " commands)",
        "deployer --deploy-dump with utilities that do nothing",
        "a bare loop of posix_spawn and waitpid with the same commands; for the last "
        "row the small restore, at the speed that the machine had for the big one");
    bool isOk = smallToBare.tellTime(1.25);
    isOk = bigToBare.tellTime(1.25) && isOk;
    return bigToSmall.tellTime(10.5) && isOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-restore DEPLOYER DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-restore: %s\n", failure.what());
        return 2;
    }
}
