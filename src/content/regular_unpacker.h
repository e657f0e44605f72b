// Content that lies beside a dump as plain archive files.
#pragma once

#include "content/content_unpacker.h"

namespace zelvo {

// Opens archives below the session directory with the system's own tools. Of an archive of many
// volumes only the first is opened. Needs theSession.
class RegularUnpacker : public ContentUnpacker {
  public:
    // Unpacks the whole archive, whatever the includes. Returns what tar prints without its last
    // line feed as one name, which is the member's name for an archive of one plainly named file.
    // A failure goes to the debug log and gives no names at all.
    Paths unpackTar(const Cid& cid, const std::string& destination, const Paths& includes) override;
    // A failure goes to the debug log only.
    void extractPart(const Cid& cid, const std::string& destination) override;
    // Loads an archive of one file; of a server type that is not known nothing is loaded. The
    // password goes through the client's environment. Raises UnExpectedResult when the archive does
    // not give that file, CantCreateTempDir, and ExecCmd::Failed of the client.
    void unpackDb(const Cid& cid, const DbServerAccess& server,
                  const std::string& database) override;
};

}  // namespace zelvo
