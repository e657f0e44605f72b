// bench-repository USE_REPOSITORY DIRECTORY: transfers of a repository on a server beside those of
// curl, and the listing of many backups beside find and beside that of fewer.
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "ftp_server.h"
#include "measure.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;

constexpr int kPairs = 7;
constexpr int kRounds = 5;
constexpr std::uintmax_t kBigFile = 1'000'000'000;
constexpr std::uintmax_t kSmallFile = 10'000'000;
// In kilobytes: what the peak of the same work varies by.
constexpr double kNoise = 2 * 1024;
constexpr int kManyBackups = 10'000;
constexpr int kFewBackups = 1'000;
constexpr double kAnyRatio = std::numeric_limits<double>::infinity();

void writeFile(const fs::path& path, std::uintmax_t size) {
    const std::string block(1'000'000, 'c');
    std::ofstream file(path);
    for (std::uintmax_t written = 0; written < size; written += block.size()) {
        file << block;
    }
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

// The program that uses a repository.
class User {
  public:
    User(std::string program, fs::path directory)
        : program_(std::move(program)), directory_(std::move(directory)) {
        fs::create_directories(directory_);
    }

    Cost run(const std::vector<std::string>& command) const {
        std::vector<std::string> all = {program_, directory_};
        all.insert(all.end(), command.begin(), command.end());
        const Cost cost = bench::costOfProgram(all);
        fs::remove(directory_ / "migration.log");
        return cost;
    }

  private:
    std::string program_;
    fs::path directory_;
};

// Transfers of one file between a directory of this machine and a server.
class Transfers {
  public:
    Transfers(const User& user, const fs::path& directory, std::uintmax_t size)
        : user_(user),
          directory_(directory / "transfers"),
          size_(size),
          server_(FtpServer::Kind::kVsftpd, directory_ / "server"),
          url_("ftp://127.0.0.1:" + std::to_string(server_.port()) + "/repo") {
        writeFile(local_, size);
    }
    ~Transfers() { fs::remove_all(directory_); }
    Transfers(const Transfers&) = delete;
    Transfers& operator=(const Transfers&) = delete;

    Cost put() const {
        return measure(remote_, [this] { return user_.run({"put", url_, local_, "file"}); });
    }
    Cost putByCurl() const {
        return measure(remote_, [this] { return curl({"-T", local_, url_ + "/file"}); });
    }
    // After an upload.
    Cost get() const {
        return measure(fetched_, [this] { return user_.run({"get", url_, "file", fetched_}); });
    }
    Cost getByCurl() const {
        return measure(fetched_, [this] { return curl({"-o", fetched_, url_ + "/file"}); });
    }

  private:
    // In the mode of a restore.
    static Cost curl(const std::vector<std::string>& transfer) {
        std::vector<std::string> command = {"curl", "-sS", "-P", "-", "--disable-eprt"};
        command.insert(command.end(), transfer.begin(), transfer.end());
        return bench::costOfProgram(command);
    }

    // result: is there once the transfer is done.
    Cost measure(const fs::path& result, const std::function<Cost()>& transfer) const {
        fs::remove(result);
        const Cost cost = transfer();
        if (fs::file_size(result) != size_) {
            throw std::runtime_error("not all was transferred to " + result.string());
        }
        return cost;
    }

    const User& user_;
    fs::path directory_;
    std::uintmax_t size_;
    FtpServer server_;
    std::string url_;
    fs::path local_ = directory_ / "local";
    fs::path fetched_ = directory_ / "fetched";
    fs::path remote_ = fs::path(server_.root()) / "repo/file";
};

Comparison compare(const std::string& name, const std::function<Cost()>& subject,
                   const std::function<Cost()>& yardstick) {
    Comparison comparison(name);
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isYardstickFirst = pair % 2 == 0;
        Cost bare = isYardstickFirst ? yardstick() : Cost();
        const Cost cost = subject();
        bare = isYardstickFirst ? bare : yardstick();
        comparison.add(cost, bare);
    }
    return comparison;
}

bool runTransfers(const User& user, const fs::path& directory) {
    bench::tellHeading("A file of 1 GB to and from an FTP server of this machine",
                       "tRepository::Put and Get, in active mode",
                       "curl in the same mode; for memory the same with 10 MB, and 2 MB are what "
                       "the same work varies by");
    Cost smallUp;
    Cost smallDown;
    {
        const Transfers small(user, directory, kSmallFile);
        smallUp = small.put();
        smallDown = small.get();
    }
    const Transfers big(user, directory, kBigFile);
    bool isOk = compare(
                    "upload", [&] { return big.put(); }, [&] { return big.putByCurl(); })
                    .tellTime(1.05);
    isOk = compare(
               "download", [&] { return big.get(); }, [&] { return big.getByCurl(); })
               .tellTime(1.05) &&
           isOk;
    Comparison up("upload less 2 MB, to 10 MB");
    Comparison down("download less 2 MB, to 10 MB");
    up.add(big.put(), smallUp);
    down.add(big.get(), smallDown);
    isOk = up.tellPeak(1, kNoise) && isOk;
    return down.tellPeak(1, kNoise) && isOk;
}

// The label of the backup with a number: so many minutes behind the first.
std::string label(int number) {
    const std::time_t time = std::time_t{1'330'000'000} + std::time_t{60} * number;
    std::tm parts{};
    gmtime_r(&time, &parts);
    char text[11];
    std::strftime(text, sizeof text, "%y%m%d%H%M", &parts);
    return text;
}

void touch(const fs::path& path) { writeFile(path, 0); }

// A repository with so many backups of one client.
fs::path makeBackups(const fs::path& directory, int count) {
    const fs::path client = directory / "clients/7";
    for (int number = 0; number < count; ++number) {
        const std::string name = "backup_info_" + label(number);
        const fs::path items = client / ".discovered" / name;
        fs::create_directories(items);
        for (const char* item : {"GUID_guid", "objectid_7", "owner_server", "ownertype_server"}) {
            touch(items / item);
        }
        touch(items / ("size_" + std::to_string(number)));
        std::ofstream(client / (name + ".xml"))
            << "<migration-dump><client guid='guid' name='client'><description>Backup " << number
            << "</description></client></migration-dump>\n";
    }
    fs::create_directories(directory / ".discovered");
    touch(directory / ".discovered/guid_7");
    return directory;
}

// A repository with so many archives of two parts.
fs::path makeArchives(const fs::path& directory, int count) {
    fs::create_directories(directory);
    for (int number = 0; number < count; ++number) {
        const std::string name = "backup_" + label(number) + ".tgz";
        touch(directory / name);
        touch(directory / (name + "1"));
    }
    return directory;
}

// One way to list.
struct Listing {
    const char* kind;
    fs::path (*make)(const fs::path& directory, int count);
    std::vector<std::string> (*command)(const fs::path& place, const std::string& count);
};

std::vector<std::string> listBackups(const fs::path& place, const std::string& count) {
    return {"list", place, "guid", count};
}

std::vector<std::string> listArchives(const fs::path& place, const std::string& count) {
    return {"packed", place, count};
}

bool runListing(const User& user, const fs::path& directory, const Listing& listing) {
    const fs::path few = listing.make(directory / listing.kind / "few", kFewBackups);
    const fs::path many = listing.make(directory / listing.kind / "many", kManyBackups);
    const auto list = [&](const fs::path& place, int count) {
        return user.run(listing.command(place, std::to_string(count)));
    };
    const auto listMany = [&] { return list(many, kManyBackups); };
    Comparison manyToFew("10,000, to the 1,000");
    for (int round = 0; round < kRounds; ++round) {
        const Cost before = list(few, kFewBackups);
        const Cost cost = listMany();
        manyToFew.add(cost, mean(before, list(few, kFewBackups)));
    }
    bench::tellHeading(std::string("A list of 10,000 ") + listing.kind,
                       "a process that lists a local repository",
                       "find over the same tree, without a target; for \"to the 1,000\" the lists "
                       "of 1,000 right before and after");
    compare("10,000, to find", listMany, [&] {
        return bench::costOfProgram({"find", many});
    }).tellTime(kAnyRatio);
    return manyToFew.tellTime(10.5);
}

bool run(const std::string& program, const fs::path& directory) {
    const User user(program, directory / "user");
    bool isOk = runTransfers(user, directory);
    isOk = runListing(user, directory, {"backups of a client", makeBackups, listBackups}) && isOk;
    return runListing(user, directory, {"archives of two parts", makeArchives, listArchives}) &&
           isOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-repository USE_REPOSITORY DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-repository: %s\n", failure.what());
        return 2;
    }
}
