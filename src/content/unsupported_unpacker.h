// What stands in for an unpacker where content cannot be read.
#pragma once

#include "content/content_unpacker.h"

namespace zelvo {

// Refuses every archive, so that each content is told as lost and the rest is restored.
class UnsupportedUnpacker : public ContentUnpacker {
  public:
    // All raise NotSupportedOperation.
    Paths unpackTar(const Cid& cid, const std::string& destination, const Paths& includes) override;
    void extractPart(const Cid& cid, const std::string& destination) override;
    void unpackDb(const Cid& cid, const DbServerAccess& server,
                  const std::string& database) override;
};

}  // namespace zelvo
