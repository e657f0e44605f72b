// The content files of structured backups, as their info documents tell.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "repository/info_xml_reader.h"
#include "repository/transport.h"

namespace zelvo {

// The path of a content file that an info document names. Raises what normalPath raises.
std::string contentPath(const std::string& infoPath, const ContentEntry& entry,
                        const std::string& file);

// What stands in front of "info_" and the label in the name of an info document: the full prefix of
// a dump.
std::string fullPrefix(const std::string& infoName);

// The content of one dump.
class DumpContent {
  public:
    // Reads the document; what hinders that is told in the log.
    DumpContent(tRepositoryTransport& transport, const std::string& infoPath);

    // Whether the document names the file; one that cannot be read may name all that has its prefix
    // and label. path: as normalPath gives it.
    bool claims(const std::string& path) const;

    // The content files; none of a document that cannot be read.
    const std::set<std::string>& paths() const { return paths_; }

  private:
    bool read(tRepositoryTransport& transport);

    std::string infoPath_;
    std::set<std::string> paths_;
    bool isRead_ = false;
};

// The content of all dumps of a repository, as far as it is asked for.
class StructuredContent {
  public:
    // transport: must outlive it.
    explicit StructuredContent(tRepositoryTransport& transport) : transport_(transport) {}

    // Whether a file is, or may be, content of a dump in its directory or above. A content file has
    // the label of its dump. Raises what normalPath raises, and the failures of the transport.
    bool holds(const std::string& path);

  private:
    // The names in a directory.
    const std::vector<std::string>& listed(const std::string& dir);
    const DumpContent& contentOf(const std::string& infoPath);

    tRepositoryTransport& transport_;
    std::map<std::string, std::vector<std::string>> listings_;
    std::map<std::string, DumpContent> contents_;
};

// Raises RepositoryError for an archive that is part of another one, and for one whose parts are
// content of a structured backup. path: of the archive, parts: of all its files.
void requireOwnParts(tRepositoryTransport& transport, const std::string& path,
                     const std::vector<std::string>& parts);

}  // namespace zelvo
