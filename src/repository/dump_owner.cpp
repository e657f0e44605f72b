#include "repository/dump_owner.h"

#include <algorithm>
#include <boost/filesystem/path.hpp>
#include <set>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// What stands in front of "info_" and the label: the full prefix of a dump.
std::string fullPrefix(const std::string& infoName) {
    const std::string prefix = infoName.substr(0, infoName.rfind("info_"));
    return prefix.ends_with('_') ? prefix.substr(0, prefix.size() - 1) : prefix;
}

// A path that a document or a caller writes as it likes, in the one form that can be compared.
std::string plainPath(const std::string& path) {
    const std::string plain = boost::filesystem::path(path).lexically_normal().string();
    const std::size_t start = plain.starts_with("./") ? 2 : 0;
    return plain.substr(std::min(plain.find_first_not_of("/\\", start), plain.size()));
}

// The dumps of one directory that a search by label and first word does not tell apart.
class SharedDirectory {
  public:
    SharedDirectory(tRepositoryTransport& transport, const std::string& infoPath,
                    const std::string& label, const DumpFiles& found)
        : dir_(parentOf(infoPath)),
          ownInfo_(joinPath(dir_, fileNameOf(infoPath))),
          ownItems_(GetDiscoveredDir(ownInfo_)),
          own_(fullPrefix(fileNameOf(infoPath))) {
        for (const std::string& file : found.files) {
            if (file != ownInfo_ && parentOf(file) == dir_ && InfoXmlMatchToLabel(file, label)) {
                others_.push_back(fullPrefix(fileNameOf(file)));
                noteContent(transport, file);
            }
        }
        for (const std::string& items : found.discovered) {
            if (items != ownItems_ && parentOf(items) == joinPath(dir_, DISCOVERED)) {
                others_.push_back(fullPrefix(fileNameOf(items)));
            }
        }
    }

    // With others there, what is not certainly the dump's own is not taken for it.
    bool isForeign(const std::string& path) const {
        if (others_.empty() || path == ownInfo_ || path == ownItems_) {
            return false;
        }
        const std::string name = fileNameOf(path);
        return !FileMatchToPrefix(name, own_) || content_.contains(plainPath(path)) ||
               std::any_of(others_.begin(), others_.end(), [&](const std::string& other) {
                   return other.size() >= own_.size() && FileMatchToPrefix(name, other);
               });
    }

  private:
    // What the document of another dump names; of one that cannot be read only names tell.
    void noteContent(tRepositoryTransport& transport, const std::string& infoPath) {
        try {
            for (const ContentEntry& entry : tInfoXmlReader(&transport, infoPath).ReadContent()) {
                for (const std::string& file : entry.files) {
                    content_.insert(contentPath(infoPath, entry, file));
                }
            }
        } catch (const ExTraceable& failure) {
            LogMsg(failure);
        }
    }

    std::string dir_;
    std::string ownInfo_;
    std::string ownItems_;
    std::string own_;
    // Full prefixes.
    std::vector<std::string> others_;
    // Paths that others name.
    std::set<std::string> content_;
};

}  // namespace

std::string contentPath(const std::string& infoPath, const ContentEntry& entry,
                        const std::string& file) {
    return plainPath(joinPath(joinPath(parentOf(infoPath), entry.path), file));
}

bool IsPartOfAnotherDump(tRepositoryTransport& transport, const std::string& dir,
                         const std::string& label, const std::string& prefix) {
    std::string above = dir;
    while (!above.empty()) {
        above = parentOf(above);
        if (HasInfoXml(transport, above, label, prefix, false)) {
            return true;
        }
    }
    return false;
}

DumpFiles FindDumpFiles(tRepositoryTransport& transport, const std::string& infoPath) {
    const std::string label = GetInfoXmlsLabel(infoPath);
    DumpFiles found;
    FindInfoXmlAndDiscovered(transport, parentOf(infoPath), label, GetDumpPrefix(infoPath), true,
                             found);
    const SharedDirectory shared(transport, infoPath, label, found);
    const auto isForeign = [&](const std::string& path) { return shared.isForeign(path); };
    std::erase_if(found.files, isForeign);
    std::erase_if(found.discovered, isForeign);
    return found;
}

}  // namespace zelvo
