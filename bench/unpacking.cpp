// bench-unpacking UNPACK DIRECTORY: unpacking big archives beside a bare tar. Runs in a panel.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

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
    Unpacking(std::string unpack, const fs::path& directory, const Shape& shape)
        : unpack_(std::move(unpack)),
          session_(directory / "session"),
          archive_(std::string(shape.name) + ".tar"),
          destination_(directory / "unpacked") {
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
        bench::costOfProgram(
            {"tar", "-cvf", session_ / archive_, "--index-file", names, "-C", tree, "."});
        namesSize_ = static_cast<double>(fs::file_size(names)) / 1024;
        fs::remove_all(tree);
    }
    ~Unpacking() {
        fs::remove(session_ / archive_);
        fs::remove_all(destination_);
    }
    Unpacking(const Unpacking&) = delete;
    Unpacking& operator=(const Unpacking&) = delete;

    Cost measure() const {
        fs::remove_all(destination_);
        return bench::costOfProgram({unpack_, session_, archive_, destination_});
    }

    // With the owners that the directory gets, set by hand.
    Cost measureBare() const {
        fs::remove_all(destination_);
        return bench::costOfProgram(
            {"sh", "-c",
             "mkdir \"$1\" && tar -xf \"$0\" -C \"$1\" && chmod 0750 \"$1\" && "
             "chown popuser:qrdcln \"$1\"",
             session_ / archive_, destination_});
    }

    // Of the names in the archive, in kilobytes.
    double namesSize() const { return namesSize_; }

  private:
    std::string unpack_;
    fs::path session_;
    std::string archive_;
    fs::path destination_;
    double namesSize_ = 0;
};

// Measures time, and tells it. Returns whether it is good.
bool compare(const Unpacking& unpacking, const Shape& shape) {
    Comparison toBare(shape.name);
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isBareFirst = pair % 2 == 0;
        Cost bare = isBareFirst ? unpacking.measureBare() : Cost();
        const Cost cost = unpacking.measure();
        bare = isBareFirst ? bare : unpacking.measureBare();
        toBare.add(cost, bare);
    }
    return toBare.tellTime(1.1);
}

bool run(const std::string& unpack, const fs::path& directory) {
    bench::tellHeading(
        "Unpacking an archive", "an archive of the session is unpacked as by a restore",
        "tar -x, chmod and chown; for memory the archive of one small file. \"Less the "
        "names\": less six times their text, as often as it is there while it is "
        "logged");
    const Cost small = Unpacking(unpack, directory, kSmall).measure();
    Comparison bigToSmall(kBig.name);
    Comparison manyToSmall("200,000 small files less the names");
    bool isOk = true;
    {
        const Unpacking big(unpack, directory, kBig);
        isOk = compare(big, kBig);
        bigToSmall.add(big.measure(), small);
    }
    const Unpacking many(unpack, directory, kMany);
    isOk = compare(many, kMany) && isOk;
    manyToSmall.add(many.measure(), small);
    isOk = bigToSmall.tellPeak(1.1) && isOk;
    return manyToSmall.tellPeak(1.1, kCopies * many.namesSize()) && isOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-unpacking UNPACK DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-unpacking: %s\n", failure.what());
        return 2;
    }
}
