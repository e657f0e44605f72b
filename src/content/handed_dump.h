// The dump of a database on its way from an archive to the client that loads it.
#pragma once

#include <string>
#include <vector>

#include "exec/outsider.h"

namespace zelvo {

// A dump that a client can read which can read nothing else of its author's choice: the client gets
// an account of its own, and the dump is given to that.
class HandedDump {
  public:
    // Takes the first file of an archive that was unpacked. A name that a client could take for a
    // command of its own becomes a plain one. directory: where it was unpacked; nobody else works
    // there. names: what was unpacked, relative to it, directories with "/" at their end.
    //
    // Raises UnExpectedResult, with the reason, when the first is no regular file or when it cannot
    // be handed over, as on a machine without a number for an account that nobody has.
    HandedDump(const std::string& directory, const std::vector<std::string>& names);

    const std::string& directory() const { return directory_; }
    // Full path: the directory, and letters of "[A-Za-z0-9._/@+-]" below it.
    const std::string& path() const { return path_; }
    // Who may read it beside root.
    const Outsider& reader() const { return reader_; }
    // The other files, with ", " between them; empty for none.
    const std::string& others() const { return others_; }

  private:
    void takeFirst(const std::vector<std::string>& names);
    void makePlain();
    // Opens the file, and the way to it, to a group. Returns 0 or an error number.
    int giveTo(gid_t group) const;
    // Where the system has no large number for an account of its own, it is a small one.
    void handOver();

    std::string directory_;
    std::string path_;
    std::string others_;
    Outsider reader_ = Outsider::unique();
};

}  // namespace zelvo
