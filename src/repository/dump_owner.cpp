#include "repository/dump_owner.h"

#include <algorithm>

#include "repository/dump_content.h"
#include "repository/names.h"
#include "repository/path_guard.h"

namespace zelvo {

namespace {

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
                content_.emplace_back(transport, file);
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
        return !FileMatchToPrefix(name, own_) ||
               std::any_of(
                   content_.begin(), content_.end(),
                   [&](const DumpContent& other) { return other.claims(normalPath(path)); }) ||
               std::any_of(others_.begin(), others_.end(), [&](const std::string& other) {
                   return other.size() >= own_.size() && FileMatchToPrefix(name, other);
               });
    }

  private:
    std::string dir_;
    std::string ownInfo_;
    std::string ownItems_;
    std::string own_;
    // Full prefixes.
    std::vector<std::string> others_;
    std::vector<DumpContent> content_;
};

}  // namespace

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
