// Content that is put in place only after the objects that own it exist: it is registered while
// they are restored, and unpacked in one go afterwards.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "content/cid.h"
#include "content/content_unpacker.h"

namespace zelvo {

// A dump may hold all content of one kind in a whole archive, to which parts refer by their place
// inside, or each part in an archive of its own. The whole is unpacked once, with the members of
// the parts that it took, and the other parts one by one. Needs theDebugLog.
class RefferredCidCollection {
  public:
    virtual ~RefferredCidCollection() = default;
    RefferredCidCollection(const RefferredCidCollection&) = delete;
    RefferredCidCollection& operator=(const RefferredCidCollection&) = delete;

    // Unpacks what has been registered, in the order of registration. The failure of one part costs
    // that part and is told; that of the whole archive costs the parts that it took. Raises
    // MigrationTerminatedException between two archives when the run is to stop.
    void Extract(ContentUnpacker& unpacker);

  protected:
    using Failure = std::unique_ptr<ExTaggedIncludable>;

    // The lines of the debug log.
    struct Lines {
        const char* begin;
        const char* whole;
        const char* end;
    };

    // node: the element that may have the whole archive. wholeType: its type word.
    RefferredCidCollection(const XmlNode& node, const std::string& wholeType, const Lines& lines);

    // Registers a part. One without a type, which is content that the dump does not have, is
    // dropped. Parts whose place inside an archive is no safe name are not given to the whole, so
    // that they fail by themselves.
    void addToExtract(std::unique_ptr<RefferredCid> cid);

    // Unpacks the whole archive. includes: the members to take.
    virtual void extractWhole(ContentUnpacker& unpacker, const WholeContentCid& whole,
                              const ContentUnpacker::Paths& includes) = 0;
    // Unpacks a part by itself, and does what is left to do then. cid: one of this collection, here
    // as in what follows.
    virtual void extractPart(ContentUnpacker& unpacker, const RefferredCid& cid) = 0;
    // The parts that the whole took, in the order of registration.
    std::vector<const RefferredCid*> taken() const;
    // What is left to do for one of these, also after the whole has failed.
    virtual void finishPart(ContentUnpacker& /*unpacker*/, const RefferredCid& /*cid*/) {}
    // The failure that tells that a part is lost.
    virtual Failure failureOf(const RefferredCid& cid) const = 0;

  private:
    // The members to take from the whole; all of them if it took a part that is all of it.
    ContentUnpacker::Paths includes() const;

    Lines lines_;
    WholeContentCid whole_;
    std::vector<std::unique_ptr<RefferredCid>> toExtract_;
};

}  // namespace zelvo
