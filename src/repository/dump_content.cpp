#include "repository/dump_content.h"

#include <algorithm>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_log.h"
#include "repository/tolerated.h"

namespace zelvo {

std::string contentPath(const std::string& infoPath, const ContentEntry& entry,
                        const std::string& file) {
    // As a search finds it, whatever way the document writes it.
    return normalPath(joinPath(joinPath(parentOf(infoPath), entry.path), file));
}

std::string fullPrefix(const std::string& infoName) {
    const std::string prefix = infoName.substr(0, infoName.rfind("info_"));
    return prefix.ends_with('_') ? prefix.substr(0, prefix.size() - 1) : prefix;
}

DumpContent::DumpContent(tRepositoryTransport& transport, const std::string& infoPath)
    : infoPath_(infoPath) {
    tolerated([&] { isRead_ = read(transport); },
              [](const ExTraceable& failure) { LogMsg(failure); }, [] { LogMsg("Unknown error"); });
}

// Returns false for a document whose signature hides or refuses what it names.
bool DumpContent::read(tRepositoryTransport& transport) {
    tInfoXmlReader reader(&transport, infoPath_);
    if (IsSigned(reader.GetLocalPath()) && !reader.ValidateSign()) {
        return false;
    }
    for (const ContentEntry& entry : reader.ReadContent()) {
        for (const std::string& file : entry.files) {
            paths_.insert(contentPath(infoPath_, entry, file));
        }
    }
    return true;
}

bool DumpContent::claims(const std::string& path) const {
    return paths_.contains(path) ||
           (!isRead_ && IsContentName(fileNameOf(path), fullPrefix(fileNameOf(infoPath_)),
                                      GetInfoXmlsLabel(infoPath_)));
}

bool StructuredContent::holds(const std::string& path) {
    const std::string file = normalPath(path);
    std::string label;
    try {
        label = GetDumpLabel(file);
    } catch (const ExTraceable&) {
        return false;
    }
    for (std::string dir = file; !dir.empty();) {
        dir = parentOf(dir);
        const std::vector<std::string>& names = listed(dir);
        if (std::any_of(names.begin(), names.end(), [&](const std::string& name) {
                return InfoXmlMatchToLabel(name, label) &&
                       contentOf(joinPath(dir, name)).claims(file);
            })) {
            return true;
        }
    }
    return false;
}

const std::vector<std::string>& StructuredContent::listed(const std::string& dir) {
    const auto found = listings_.find(dir);
    if (found != listings_.end()) {
        return found->second;
    }
    std::vector<std::string> names;
    transport_.ListDir(dir, names);
    return listings_[dir] = names;
}

const DumpContent& StructuredContent::contentOf(const std::string& infoPath) {
    return contents_.try_emplace(infoPath, transport_, infoPath).first->second;
}

}  // namespace zelvo
