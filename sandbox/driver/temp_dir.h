// A directory of a test's own, gone with the test.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempDir {
  public:
    TempDir() : path_(std::filesystem::temp_directory_path() / "unit-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) abort();
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
    std::string path_;
};

inline std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
