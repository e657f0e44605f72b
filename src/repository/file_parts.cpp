#include "repository/file_parts.h"

#include <algorithm>

#include "repository/names.h"
#include "repository/repository_errors.h"
#include "repository/urls.h"

namespace zelvo {

void GetFileParts(tRepositoryTransport& transport, const std::string& url,
                  std::vector<std::string>& parts) {
    std::string base;
    std::string whole;
    DecomposeUrl(url, base, whole);
    if (whole.empty()) {
        throw EXC(RepositoryError) % "name of exporting file is empty";
    }
    if (!transport.IsExist(url)) {
        throw EXC(RepositoryError) % ("file '" + whole + "' does not exists");
    }
    std::vector<std::string> entries;
    transport.ListDir(base, entries);
    std::vector<FilePart> found;
    for (const std::string& entry : entries) {
        FilePart part{entry, 0};
        if (IsSplittedPart(whole, entry, part.number)) {
            found.push_back(part);
        }
    }
    std::sort(found.begin(), found.end());
    parts.clear();
    for (const FilePart& part : found) {
        parts.push_back(base + part.name);
    }
}

}  // namespace zelvo
