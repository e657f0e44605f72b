// bench-database LOAD_DUMP DIRECTORY: the load of a big dump of a database beside the server's own
// client that is fed by hand, with a real server. Runs in a panel.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "mariadb.h"
#include "measure.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;

constexpr int kPairs = 4;
constexpr std::size_t kDumpSize = 500'000'000;
constexpr int kRowSize = 1000;
constexpr int kRowsInStatement = 500;
constexpr char kUser[] = "loader";
constexpr char kDatabase[] = "shop";

// Writes the dump as the server's own tool would: the table anew, then long statements.
void writeSql(const fs::path& path) {
    const std::string row = "('" + std::string(kRowSize, 'r') + "')";
    std::string statement = "insert into t values " + row;
    for (int i = 1; i < kRowsInStatement; ++i) {
        statement += "," + row;
    }
    statement += ";\n";
    std::ofstream file(path);
    file << "drop table if exists t;\ncreate table t (a text);\n";
    for (std::size_t size = 0; size < kDumpSize; size += statement.size()) {
        file << statement;
    }
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

class Loading {
  public:
    Loading(std::string loadDump, const fs::path& directory)
        : loadDump_(std::move(loadDump)),
          session_(directory / "session"),
          byHand_(directory / "by-hand"),
          server_(directory / "server") {
        fs::create_directories(session_);
        writeSql(session_ / "dump.sql");
        bench::costOfProgram({"tar", "-cf", session_ / "dump.tar", "-C", session_, "dump.sql"});
        fs::remove(session_ / "dump.sql");
        server_.query(std::string("create database ") + kDatabase + "; grant all on " + kDatabase +
                      ".* to " + kUser + "@localhost identified by 'secret'");
    }

    Cost measure() {
        empty();
        const Cost cost = bench::costOfProgram({loadDump_, session_, "dump.tar", kUser, kDatabase});
        checkRows();
        return cost;
    }

    Cost measureByHand() {
        empty();
        const Cost cost = bench::costOfProgram(
            {"sh", "-c",
             "mkdir \"$1\" && tar -xf \"$0\" -C \"$1\" && "
             "MYSQL_PWD=secret mariadb --no-defaults -u \"$2\" \"$3\" <\"$1/dump.sql\" && "
             "rm -r \"$1\"",
             session_ / "dump.tar", byHand_, kUser, kDatabase});
        checkRows();
        return cost;
    }

  private:
    // Each load finds the server as the one before did.
    void empty() { server_.query(std::string("drop table if exists ") + kDatabase + ".t"); }

    void checkRows() {
        const std::string count =
            server_.query(std::string("select count(*) from ") + kDatabase + ".t");
        if (std::stoul(count) * kRowSize < kDumpSize * 9 / 10) {
            throw std::runtime_error("not all rows are there, but " + count);
        }
    }

    std::string loadDump_;
    fs::path session_;
    fs::path byHand_;
    MariaDbServer server_;
};

bool compare(const std::string& loadDump, const fs::path& directory) {
    Loading loading(loadDump, directory);
    Comparison toByHand("a dump of 500 MB");
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isByHandFirst = pair % 2 == 0;
        Cost byHand = isByHandFirst ? loading.measureByHand() : Cost();
        const Cost cost = loading.measure();
        byHand = isByHandFirst ? byHand : loading.measureByHand();
        toByHand.add(cost, byHand);
    }
    bench::tellHeading("Loading the dump of a database",
                       "an archive of the session is unpacked and loaded as by a restore",
                       "tar -x, and the server's client with the dump on its standard input");
    const bool isTimeOk = toByHand.tellTime(1.1);
    return toByHand.tellPeak(1.1) && isTimeOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-database LOAD_DUMP DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return compare(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-database: %s\n", failure.what());
        return 2;
    }
}
