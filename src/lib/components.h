// The panel's components: which packages are installed, in what version.
#pragma once

#include <cstddef>

// Puts the version of a package into the buffer of size bytes, ended by a zero and cut to what
// fits. A database that does not answer, and a package that does not have exactly one row with a
// version, are reported and end the process with code 1.
void get_pkg_version(const char* name, char* buffer, std::size_t size);

// The same for those who can go on without the version: false, with the reason in the buffer in
// place of the version and without a report, where get_pkg_version would end the process.
bool try_pkg_version(const char* name, char* buffer, std::size_t size);

// False when the version of a package is "not_installed". Ends the process where get_pkg_version
// does.
bool is_package_installed(const char* name);

// The same, but false, and no word, where get_pkg_version would end the process.
bool is_package_installed_silent(const char* name);
