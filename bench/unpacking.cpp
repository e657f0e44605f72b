// bench-unpacking UNPACK UNPACK_SITE UNPACK_MAILBOX USER DIRECTORY: unpacking big archives, the
// content of a domain and a mailbox, beside a bare tar. USER: a customer's. Runs in a panel.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "commons/files.h"
#include "content/destination.h"
#include "measure.h"

namespace {

namespace fs = std::filesystem;
using bench::Comparison;
using bench::Cost;

constexpr int kPairs = 6;
// The names are one text, which is there six times while it is logged: what tar said, the report of
// it, and in the log library the event, a stream that grows to twice the size, and its outcome.
constexpr double kCopies = 6;

// The shape of an archive.
struct Shape {
    const char* name;
    int directories;
    int filesInEach;
    std::size_t fileSize;
};

constexpr Shape kBig = {"1 GB in 16 files", 1, 16, 1'000'000'000 / 16};
constexpr Shape kMany = {"200,000 small files", 200, 1000, 100};
constexpr Shape kSmall = {"one small file", 1, 1, 100};
constexpr Shape kMailbox = {"a mailbox of 50,000 messages", 1, 50'000, 2000};
constexpr Shape kSite = {"20,000 files in 30 parts", 200, 100, 2000};

// What unpacks, and whom the directory belongs to then.
struct Subject {
    // Gets the session, the archive, the directory and more.
    std::string program;
    std::vector<std::string> more;
    fs::path destination;
    std::string mode;
    std::string owner;
    // Of what is in the archive.
    std::string ownerOfMembers = "root:root";
};

std::string bytes(std::size_t size) {
    std::mt19937_64 random(size);
    std::string text;
    while (text.size() < size) {
        const auto word = random();
        text.append(reinterpret_cast<const char*>(&word), sizeof word);
    }
    text.resize(size);
    return text;
}

// An archive in a session, unpacked again and again into one place.
class Unpacking {
  public:
    Unpacking(Subject subject, const fs::path& directory, const Shape& shape)
        : subject_(std::move(subject)),
          session_(directory / "session"),
          archive_(std::string(shape.name) + ".tar") {
        const fs::path tree = directory / "tree";
        const std::string content = bytes(shape.fileSize);
        for (int i = 0; i < shape.directories; ++i) {
            const fs::path place = tree / ("directory-" + std::to_string(i));
            fs::create_directories(place);
            for (int k = 0; k < shape.filesInEach; ++k) {
                std::ofstream(place / ("file-" + std::to_string(k) + ".txt")) << content;
            }
        }
        fs::create_directories(session_);
        const fs::path names = directory / "names";
        bench::costOfProgram({"chown", "-R", subject_.ownerOfMembers, tree});
        bench::costOfProgram(
            {"tar", "-cvf", session_ / archive_, "--index-file", names, "-C", tree, "."});
        namesSize_ = static_cast<double>(fs::file_size(names)) / 1024;
        fs::remove_all(tree);
    }
    ~Unpacking() {
        fs::remove(session_ / archive_);
        fs::remove_all(subject_.destination);
    }
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;

    Cost measure() const {
        fs::remove_all(subject_.destination);
        std::vector<std::string> command = {subject_.program, session_, archive_,
                                            subject_.destination};
        command.insert(command.end(), subject_.more.begin(), subject_.more.end());
        return bench::costOfProgram(command);
    }

    // With the owners that the directory gets, set by hand.
    Cost measureBare() const {
        fs::remove_all(subject_.destination);
        return bench::costOfProgram(
            {"sh", "-c",
             "mkdir \"$1\" && tar -xf \"$0\" -C \"$1\" && chmod \"$2\" \"$1\" && "
             "chown \"$3\" \"$1\"",
             session_ / archive_, subject_.destination, subject_.mode, subject_.owner});
    }

    // Of the names in the archive, in kilobytes.
    double namesSize() const { return namesSize_; }

  private:
    Subject subject_;
    fs::path session_;
    std::string archive_;
    double namesSize_ = 0;
};

// Measures time, and tells it. Returns whether it is good.
bool compare(const Unpacking& unpacking, const Shape& shape, double target = 1.1) {
    Comparison toBare(shape.name);
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isBareFirst = pair % 2 == 0;
        Cost bare = isBareFirst ? unpacking.measureBare() : Cost();
        const Cost cost = unpacking.measure();
        bare = isBareFirst ? bare : unpacking.measureBare();
        toBare.add(cost, bare);
    }
    return toBare.tellTime(target);
}

bool runArchives(const std::string& unpack, const fs::path& directory) {
    bench::tellHeading(
        "Unpacking an archive", "an archive of the session is unpacked as by a restore",
        "tar -x, chmod and chown; for memory the archive of one small file. \"Less the "
        "names\": less six times their text, as often as it is there while it is "
        "logged");
    const Subject subject = {unpack, {}, directory / "unpacked", "0750", "popuser:qrdcln"};
    const Cost small = Unpacking(subject, directory, kSmall).measure();
    Comparison bigToSmall(kBig.name);
    Comparison manyToSmall("200,000 small files less the names");
    bool isOk = true;
    {
        const Unpacking big(subject, directory, kBig);
        isOk = compare(big, kBig);
        bigToSmall.add(big.measure(), small);
    }
    const Unpacking many(subject, directory, kMany);
    isOk = compare(many, kMany) && isOk;
    manyToSmall.add(many.measure(), small);
    isOk = bigToSmall.tellPeak(1.1) && isOk;
    return manyToSmall.tellPeak(1.1, kCopies * many.namesSize()) && isOk;
}

bool runSite(const std::string& unpackSite, const std::string& user, const fs::path& directory) {
    bench::tellHeading("Unpacking the content of a domain",
                       "a whole archive with 30 parts, as by the restore of a hosting",
                       "tar -x, chmod and chown");
    const fs::path vhosts = zelvo::files::getVhostsDir();
    fs::create_directories(vhosts);
    const Subject site = {unpackSite, {user}, vhosts / "site.example", "0755", user + ":qrdcln"};
    return compare(Unpacking(site, directory, kSite), kSite, 1.15);
}

bool runMailbox(const std::string& unpackMailbox, const fs::path& directory) {
    bench::tellHeading("Unpacking a mailbox",
                       "an archive of the mail user's own, as by the restore of a mail user",
                       "tar -x, chmod and chown");
    const std::string popuser = "popuser:popuser";
    const fs::path maildir = zelvo::getMaildir("site.example", "user");
    fs::create_directories(maildir.parent_path());
    const Subject mailbox = {unpackMailbox, {}, maildir, "0755", popuser, popuser};
    return compare(Unpacking(mailbox, directory, kMailbox), kMailbox, 1.15);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        std::fputs("usage: bench-unpacking UNPACK UNPACK_SITE UNPACK_MAILBOX USER DIRECTORY\n",
                   stderr);
        return 2;
    }
    try {
        bool isOk = runSite(argv[2], argv[4], argv[5]);
        isOk = runMailbox(argv[3], argv[5]) && isOk;
        return runArchives(argv[1], argv[5]) && isOk ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-unpacking: %s\n", failure.what());
        return 2;
    }
}
