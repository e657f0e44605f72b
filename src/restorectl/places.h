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

// Reads the place of an option and its credentials: the login of the URL, or else those of the
// file, or else those of the environment's variables, whose password the process then forgets, so
// that no child gets it. text: of the option, a URL or a path, which may be relative. file: a
// credentials file; empty for none. Raises UsageError for a password in text, and
// std::runtime_error for a file that cannot be read or that others can read.
Place readPlace(const std::string& text, const std::string& file, const std::string& loginVariable,
                const std::string& passwordVariable);

// The repository of the settings. Raises RepositoryError for one that cannot be reached or is no
// directory.
std::unique_ptr<tRepository> openRepository(const Settings& settings);

// The repository with the file of the other place, which need not be there yet. name: gets the
// file, which is empty for a directory. Raises UsageError for a file without a directory.
std::unique_ptr<tRepository> openOther(const Settings& settings, std::string& name);

}  // namespace zelvo
