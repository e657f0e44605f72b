// Restores of a dump, as often as they are measured.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "measure.h"

namespace bench {

// What is restored: write makes a session with count objects of one kind.
struct Shape {
    const char* name;
    void (*write)(const std::filesystem::path& session, int count);
    int count;
};

// Restores of one shape, each in a session that is made anew.
class Restore {
  public:
    // directory: of the sessions. options: more of the deployer; with those that are given here
    // the archives lie beside the dump.
    Restore(std::string deployer, const std::filesystem::path& directory, const Shape& shape,
            std::vector<std::string> options = {"--no-repository"});

    // Raises std::runtime_error when the restore fails, or has anything to tell: one that failed
    // early would look fast.
    Cost measure() const;
    // The commands of the last restore in a bare loop.
    Cost measureBare() const;

    std::filesystem::path dump() const { return original_ / "restore.xml"; }
    // Of the last restore.
    std::filesystem::path log() const { return session_ / "migration.log"; }

  private:
    void checkVerdict() const;

    std::string deployer_;
    std::vector<std::string> options_;
    std::filesystem::path original_;
    std::filesystem::path session_;
};

}  // namespace bench
