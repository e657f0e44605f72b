// Content that lies in a backup repository.
#pragma once

#include <memory>

#include "content/content_unpacker.h"
#include "repository/repository.h"

namespace zelvo {

// Gets archives of one or more volumes out of a repository. All operations raise: what failed goes
// to the debug log, and its text, behind what could not be done, into an ExTraceable without a
// cause. Needs theDebugLog. A request to stop passes.
class RepositoryUnpacker : public ContentUnpacker {
  public:
    explicit RepositoryUnpacker(std::unique_ptr<tRepository> repository)
        : repository_(std::move(repository)) {}

    // Takes the includes alone, if there are some. Returns the names of the members.
    Paths unpackTar(const Cid& cid, const std::string& destination, const Paths& includes) override;
    // Joins the volumes. A failure leaves no file at the destination.
    void extractPart(const Cid& cid, const std::string& destination) override;
    // As RegularUnpacker; of databases of "mssql" it raises that they cannot be loaded.
    void unpackDb(const Cid& cid, const DbServerAccess& server,
                  const std::string& database) override;

    // What the repository knows a path of a content identifier as.
    static std::string makeRepositoryPath(const std::string& path);
    static Paths makeRepositoryPaths(const Paths& paths);

  private:
    Paths unpack(const Cid& cid, const std::string& destination, const Paths& includes,
                 MemberAttributes attributes);
    void joinVolumes(const Paths& volumes, const std::string& destination);

    std::unique_ptr<tRepository> repository_;
};

}  // namespace zelvo
