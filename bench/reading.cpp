// bench-reading READ_DUMP SCHEMA DIRECTORY: reading and validating a big dump beside xmllint.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "dump.h"
#include "measure.h"

namespace {

constexpr int kPairs = 5;
constexpr std::size_t kDumpSize = 200'000'000;

bool run(const std::string& readDump, const std::string& schema, const std::string& directory) {
    const std::string dump = directory + "/dump.xml";
    bench::writeDump(dump, bench::domainsIn(kDumpSize) + 1000);
    bench::Comparison toXmllint("read and validate");
    for (int pair = 0; pair < kPairs; ++pair) {
        const bench::Cost yardstick =
            bench::costOfProgram({"xmllint", "--noout", "--schema", schema, dump});
        toXmllint.add(bench::costOfProgram({readDump, dump, schema}), yardstick);
    }
    bench::tellHeading(
        "Reading a dump (" + std::to_string(std::filesystem::file_size(dump) / 1'000'000) + " MB)",
        "a dump is read and checked as by the deployment of a dump", "xmllint --noout --schema");
    const bool isTimeOk = toXmllint.tellTime(1.15);
    return toXmllint.tellPeak(1.15) && isTimeOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bench-reading READ_DUMP SCHEMA DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2], argv[3]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-reading: %s\n", failure.what());
        return 2;
    }
}
