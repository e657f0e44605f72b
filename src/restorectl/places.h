// From what the user says of a place to the repository there.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "repository/repository.h"
#include "restorectl/settings.h"

namespace zelvo {

// A command line that makes no sense: of no failure, but of wrong usage.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Completes the places with what the environment and the credentials files say: of the login the
// URL's counts, or else the file's, or else that of the environment; the process then forgets the
// variables, so that no child gets them. Raises UsageError for a password in a URL and for what is
// no place, std::runtime_error for a file that cannot be read or that others can read.
void readPlaces(Settings& settings);

// The repository of the settings. Raises RepositoryError for one that cannot be reached or is no
// directory.
std::unique_ptr<tRepository> openRepository(const Settings& settings);

// The repository with the file of the other place, which need not be there yet. name: gets the
// file, which is empty for a directory. Raises UsageError for a file without a directory.
std::unique_ptr<tRepository> openOther(const Settings& settings, std::string& name);

}  // namespace zelvo
