// A panel's /etc for a test program: the user that owns what is written and a configuration whose
// product root is a directory of the test. It lies in a mount namespace of the program's own, so
// that nothing of the machine changes.
#pragma once

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

namespace test {

constexpr uid_t kPanelUser = 4711;
constexpr gid_t kPanelGroup = 4712;

inline void writeFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

// The names of what lies in a directory.
inline std::set<std::string> namesIn(const std::filesystem::path& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        names.insert(entry.path().filename());
    }
    return names;
}

// A directory that is gone at the end.
class TempDir {
  public:
    TempDir() {
        char name[] = "/tmp/deployer-unit-XXXXXX";
        if (mkdtemp(name) == nullptr) {
            throw std::runtime_error("mkdtemp failed");
        }
        path_ = name;
    }
    ~TempDir() { std::filesystem::remove_all(path_); }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// Made once for a test program.
class PanelBox : public testing::Environment {
  public:
    void SetUp() override {
        writeFile(dir_ / "etc/passwd",
                  "root:x:0:0:root:/root:/bin/sh\n"
                  "qrdadm:x:4711:4712:panel:/:/bin/false\n");
        writeFile(dir_ / "etc/group", "root:x:0:\nqrdadm:x:4712:\n");
        writeFile(dir_ / "etc/qrd/qrd.conf",
                  "PRODUCT_ROOT_D " + (dir_ / "product").string() + "\n");
        require(unshare(CLONE_NEWNS) == 0, "unshare");
        require(mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0, "mount private");
        require(mount((dir_ / "etc").c_str(), "/etc", "none", MS_BIND, nullptr) == 0, "bind /etc");
        root_ = dir_.path();
    }
    void TearDown() override { umount2("/etc", MNT_DETACH); }

    // The product root of the configuration.
    static std::filesystem::path productRoot() { return root_ / "product"; }

  private:
    static void require(bool isDone, const char* what) {
        if (!isDone) {
            throw std::runtime_error(std::string(what) + ": " + strerror(errno) +
                                     " (these tests need root)");
        }
    }

    static inline std::filesystem::path root_;
    TempDir dir_;
};

}  // namespace test
