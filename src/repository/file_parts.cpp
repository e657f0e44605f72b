#include "repository/file_parts.h"

#include <algorithm>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/urls.h"

namespace zelvo {

namespace {

// What is a part of a file among the entries of dir.
std::vector<FilePart> findParts(tRepositoryTransport& transport, const std::string& dir,
                                const std::string& whole) {
    std::vector<std::string> entries;
    transport.ListDir(dir, entries);
    std::vector<FilePart> parts;
    for (const std::string& entry : entries) {
        FilePart part{dir + entry, 0};
        if (IsSplittedPart(whole, entry, part.number) && !transport.IsDirExist(part.name)) {
            parts.push_back(part);
        }
    }
    return parts;
}

}  // namespace

std::vector<std::string> GetFileParts(tRepositoryTransport& transport, const std::string& path) {
    std::string dir;
    std::string name;
    DecomposeUrl(path, dir, name);
    if (name.empty()) {
        throw EXC(RepositoryError) % "name of exporting file is empty";
    }
    if (!transport.IsExist(path) || transport.IsDirExist(path)) {
        throw EXC(RepositoryError) % ("file '" + name + "' does not exists");
    }
    std::vector<FilePart> parts = findParts(transport, dir, name);
    std::stable_sort(parts.begin(), parts.end());
    std::vector<std::string> names(parts.size());
    std::transform(parts.begin(), parts.end(), names.begin(),
                   [](const FilePart& part) { return part.name; });
    return names;
}

bool IsPartOfArchive(tRepositoryTransport& transport, const std::string& path) {
    const std::string name = fileNameOf(path);
    if (name.empty() || !is_digit(name.back())) {
        return false;
    }
    const std::string dir = parentOf(path);
    std::vector<std::string> entries;
    transport.ListDir(dir, entries);
    return std::any_of(entries.begin(), entries.end(), [&](const std::string& entry) {
        unsigned number = 0;
        return entry != name && IsSplittedPart(entry, name, number) &&
               !transport.IsDirExist(joinPath(dir, entry));
    });
}

}  // namespace zelvo
