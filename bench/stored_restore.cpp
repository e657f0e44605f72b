// bench-stored-restore DEPLOYER DIRECTORY: restores with content out of a local repository beside
// the same ones with the content in the session. Runs in a panel whose utilities do nothing.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>

#include "dump.h"
#include "measure.h"
#include "whole_restore.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;
using bench::Restore;
using bench::Shape;

constexpr int kPairs = 6;
constexpr int kFiles = 2000;
constexpr int kFileSize = 5000;

// Each site gets the archive twice, as its documents and as its logs.
void writeSites(const fs::path& session, int count) {
    bench::writeSitesDump(session / "restore.xml", count);
    const fs::path tree = session / "tree";
    for (int number = 0; number < kFiles; ++number) {
        const fs::path place = tree / ("directory-" + std::to_string(number / 50));
        fs::create_directories(place);
        std::ofstream(place / ("page-" + std::to_string(number) + ".html"))
            << std::string(kFileSize, 'c');
    }
    bench::costOfProgram({"tar", "-cf", session / "site.tar", "-C", tree, "."});
    fs::remove_all(tree);
}

bool compare(const std::string& deployer, const fs::path& directory) {
    const Shape shape = {"10 sites, 200 MB in 40,000 files", writeSites, 10};
    // Without more the session is taken for the repository.
    const Restore stored(deployer, directory / "stored", shape, {});
    const Restore beside(deployer, directory / "beside", shape);
    // The first one finds no sites.
    beside.measure();
    Comparison toBeside(shape.name);
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isBesideFirst = pair % 2 == 0;
        Cost yardstick = isBesideFirst ? beside.measure() : Cost();
        const Cost cost = stored.measure();
        yardstick = isBesideFirst ? yardstick : beside.measure();
        toBeside.add(cost, yardstick);
    }
    bench::tellHeading("Content out of a local repository",
                       "deployer --deploy-dump with utilities that do nothing and a real tar",
                       "the same with --no-repository, which takes the content from the session");
    return toBeside.tellTime(1.1);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-stored-restore DEPLOYER DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return compare(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-stored-restore: %s\n", failure.what());
        return 2;
    }
}
