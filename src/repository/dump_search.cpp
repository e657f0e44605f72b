#include "repository/dump_search.h"

#include <algorithm>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// Twice as deep as a reseller's client's domain lies: an end for links that lead in a circle.
constexpr int kMaxDepth = 16;
// A server may go on for ever in breadth, too.
constexpr int kMaxDirs = 100000;

std::vector<std::string> listed(tRepositoryTransport& transport, const std::string& dir) {
    std::vector<std::string> names;
    transport.ListDir(dir, names);
    return names;
}

// Many FTP servers leave out what begins with a dot.
std::vector<std::string> listedWithDiscovered(tRepositoryTransport& transport,
                                              const std::string& dir) {
    std::vector<std::string> names = listed(transport, dir);
    if (std::find(names.begin(), names.end(), DISCOVERED) == names.end() &&
        transport.IsDirExist(joinPath(dir, DISCOVERED))) {
        names.emplace_back(DISCOVERED);
    }
    return names;
}

bool isFile(tRepositoryTransport& transport, const std::string& path) {
    return transport.IsExist(path) && !transport.IsDirExist(path);
}

std::string subject(const std::string& label, const std::string& prefix, const std::string& dir) {
    return " by label '" + label + "' and prefix '" + prefix + "' in dir " + dir;
}

// A search through the directories, with what it looks for.
class DumpSearch {
  public:
    DumpSearch(tRepositoryTransport& transport, const std::string& label, const std::string& prefix,
               bool withDiscovered, DumpFiles& found)
        : transport_(transport),
          label_(label),
          prefix_(prefix),
          withDiscovered_(withDiscovered),
          found_(found) {}

    // depth: of dir below the start of the search.
    void searchIn(const std::string& dir, int depth) {
        LogMsg("Search info xml and discovered" + subject(label_, prefix_, dir));
        if (++dirs_ > kMaxDirs) {
            throw EXC(RepositoryError) %
                ("more than " + std::to_string(kMaxDirs) + " directories to search for a dump");
        }
        std::vector<std::string> names;
        searchPart(dir, [&] {
            names =
                withDiscovered_ ? listedWithDiscovered(transport_, dir) : listed(transport_, dir);
        });
        for (const std::string& name : names) {
            take(name, joinPath(dir, name), depth);
        }
    }

  private:
    void take(const std::string& name, const std::string& path, int depth) {
        if (transport_.IsLink(path) && transport_.IsDirExist(path)) {
            // What it leads to is another object's, or of no repository at all.
            skip(path, "is a link");
        } else if (name == DISCOVERED) {
            takeDiscovered(path);
        } else if (transport_.IsDirExist(path)) {
            descend(path, depth + 1);
        } else if (FileMatchToLabel(name, label_) && FileMatchToPrefix(name, prefix_)) {
            LogMsg("Found file " + name);
            if (isPartOfDump(name)) {
                found_.files.push_back(path);
            }
        }
    }

    void takeDiscovered(const std::string& dir) {
        if (withDiscovered_) {
            searchPart(dir, [&] {
                const auto dirs = FindDiscovered(transport_, dir, label_, prefix_);
                found_.discovered.insert(found_.discovered.end(), dirs.begin(), dirs.end());
            });
        }
    }

    void descend(const std::string& dir, int depth) {
        if (depth <= kMaxDepth) {
            searchIn(dir, depth);
        } else {
            skip(dir, "lies too deep for a dump");
        }
    }

    // Runs a part of a search, which a directory that cannot be listed ends.
    template <class Part>
    void searchPart(const std::string& dir, Part&& part) {
        try {
            part();
        } catch (const ExTraceable& failure) {
            LogMsg(failure);
            LogMsg("Unable to list dir " + dir);
            found_.skipped.push_back(dir);
        }
    }

    void skip(const std::string& dir, const std::string& reason) {
        LogError("The dir " + dir + " " + reason + " and is not searched");
        found_.skipped.push_back(dir);
    }

    bool isPartOfDump(const std::string& name) const {
        // The parts of a split archive have its name and a number behind it.
        const std::string whole = name.substr(0, name.find_last_not_of("0123456789") + 1);
        const bool isArchive =
            whole.ends_with(".zip") || whole.ends_with(".tar") || whole.ends_with(".tgz");
        return InfoXmlMatchToLabel(name, label_) ||
               (isArchive && IsContentName(name, prefix_, label_));
    }

    tRepositoryTransport& transport_;
    const std::string& label_;
    const std::string& prefix_;
    bool withDiscovered_;
    DumpFiles& found_;
    // Searched so far.
    int dirs_ = 0;
};

}  // namespace

bool HasInfoXml(tRepositoryTransport& transport, const std::string& dir, const std::string& label,
                const std::string& prefix, bool orDiscovered) {
    LogMsg("Check info xml by label " + label + " in dir " + dir);
    const std::vector<std::string> names =
        orDiscovered ? listedWithDiscovered(transport, dir) : listed(transport, dir);
    const auto isInfo = [&](const std::string& name) {
        return InfoXmlMatchToLabel(name, label) && FileMatchToPrefix(name, prefix) &&
               isFile(transport, joinPath(dir, name));
    };
    if (std::any_of(names.begin(), names.end(), isInfo)) {
        return true;
    }
    return orDiscovered && std::find(names.begin(), names.end(), DISCOVERED) != names.end() &&
           !FindDiscovered(transport, joinPath(dir, DISCOVERED), label, prefix).empty();
}

std::vector<std::string> FindDiscovered(tRepositoryTransport& transport, const std::string& dir,
                                        const std::string& label, const std::string& prefix) {
    LogMsg("Search discovered" + subject(label, prefix, dir));
    std::vector<std::string> found;
    for (const std::string& name : listed(transport, dir)) {
        if (DiscoveredMatchToLabel(name, label) && FileMatchToPrefix(name, prefix)) {
            found.push_back(joinPath(dir, name));
            LogMsg("Found discovered dir " + found.back());
        }
    }
    return found;
}

void FindInfoXmlAndDiscovered(tRepositoryTransport& transport, const std::string& dir,
                              const std::string& label, const std::string& prefix,
                              bool withDiscovered, DumpFiles& found) {
    DumpSearch(transport, label, prefix, withDiscovered, found).searchIn(dir, 0);
}

}  // namespace zelvo
