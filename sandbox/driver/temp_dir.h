// A directory of a test's own, gone with the test.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempDir {
  public:
    TempDir() : TempDir(std::filesystem::temp_directory_path()) {}
    // In memory where that can be had: for much that is written and soon forgotten.
    static TempDir inMemory() {
        return TempDir(access("/dev/shm", W_OK) == 0 ? "/dev/shm"
                                                     : std::filesystem::temp_directory_path());
    }
    ~TempDir() { std::filesystem::remove_all(path_); }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string path(const std::string& name) const { return path_ + "/" + name; }

    // Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

  private:
    explicit TempDir(const std::filesystem::path& base) : path_(base / "unit-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) abort();
    }

    std::string path_;
};

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
