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
        bench::costOfProgram({"tar", "-cf", session_ / archive_, "-C", tree, "."});
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

  private:
    std::string unpack_;
    fs::path session_;
    std::string archive_;
    fs::path destination_;
};

// The memory of an unpacking whose archive is no weight.
double smallPeak(const std::string& unpack, const fs::path& directory) {
    return Unpacking(unpack, directory, kSmall).measure().peak;
}

bool compare(const std::string& unpack, const fs::path& directory, const Shape& shape, Cost& last) {
    const Unpacking unpacking(unpack, directory, shape);
    Comparison toBare(shape.name);
    for (int pair = 0; pair < kPairs; ++pair) {
        // In turn the first: what the one leaves of a machine, the other finds.
        const bool isBareFirst = pair % 2 == 0;
        Cost bare = isBareFirst ? unpacking.measureBare() : Cost();
        last = unpacking.measure();
        bare = isBareFirst ? bare : unpacking.measureBare();
        toBare.add(last, bare);
    }
    return toBare.tellTime(1.1);
}

bool run(const std::string& unpack, const fs::path& directory) {
    bench::tellHeading("Unpacking an archive",
                       "an archive of the session is unpacked as by a restore",
                       "tar -x, chmod and chown; for the last row the archive of one small file");
    Cost big;
    Cost many;
    bool isOk = compare(unpack, directory, kBig, big);
    isOk = compare(unpack, directory, kMany, many) && isOk;
    Cost small;
    small.peak = smallPeak(unpack, directory);
    Comparison bigToSmall(kBig.name);
    bigToSmall.add(big, small);
    isOk = bigToSmall.tellPeak(1.1) && isOk;
    std::printf("  %s take %.1f MB more than one\n", kMany.name, (many.peak - small.peak) / 1024);
    return isOk;
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
