// How the files of a repository are named. A dump is found by these rules alone.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The directory beside an object's files that holds the discovered items of its dumps.
inline constexpr const char* DISCOVERED = ".discovered";
// The label that stands for no date.
inline constexpr const char* ZERO_DATE = "0000000000";

// A part of a split file: the whole file's name with a number behind it.
struct FilePart {
    std::string name;
    unsigned number = 0;

    bool operator<(const FilePart& other) const { return number < other.number; }
};

bool is_digit(char c);
// Whether text has the form of a label: ten digits.
bool IsLabel(const std::string& text);

// ---- matching: name is a file's name without its path, label ten digits.

bool FileMatchToPrefix(const std::string& name, const std::string& prefix);
bool DiscoveredMatchToLabel(const std::string& name, const std::string& label);
bool InfoXmlMatchToLabel(const std::string& name, const std::string& label);
bool DirMatchToLabel(const std::string& name, const std::string& label);
// Stem, "_", label and one extension.
bool FileMatchToLabel(const std::string& name, const std::string& label);
// Prefix, "_", anything, "_", label and one extension: the packed backup of a dump, which may lie
// beside it, has but one "_" between prefix and label.
bool IsContentName(const std::string& name, const std::string& prefix, const std::string& label);
// Whether name is base or a numbered part of it; number gets 0 or the part's.
bool IsSplittedPart(const std::string& base, const std::string& name, unsigned& number);
// Whether a packed backup may have this name. Logs what it matches.
bool IsFtpDumpName(const std::string& name);
// Whether path is parent or stands below it.
bool PathBeginsWith(const std::string& parent, const std::string& path);
// Whether a component of path is DISCOVERED; before and behind get what stands around the first
// one, without the "/" between.
bool IsAnyDiscoveredPath(const std::string& path, std::string& before, std::string& behind);
// The same when what follows begins with the discovered directory of a dump with the label.
bool IsDiscoveredPath(const std::string& path, const std::string& label, std::string& before,
                      std::string& behind);

// ---- labels and prefixes of paths.

// The label of a content file or archive: between the last "_" and the extension. Raises
// RepositoryException for a name without "_" or with something else there.
std::string GetDumpLabel(const std::string& path);
// The label of an info document. Raises RepositoryError and RepositoryException for another name.
std::string GetInfoXmlsLabel(const std::string& path);
// The file name's part before the first "_", or all of it.
std::string GetDumpPrefix(const std::string& path);
// path without ".xml" at its end.
std::string GetInfoXmlDir(const std::string& path);
// The directory of the discovered items of an info document.
std::string GetDiscoveredDir(const std::string& path);

// The paths sorted by their bytes, each once, without those that stand below another one.
std::vector<std::string> SortPaths(std::vector<std::string> paths);

}  // namespace zelvo
