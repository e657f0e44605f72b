#include "content/refferred_collection.h"

#include <algorithm>
#include <utility>

#include "content/content_failure.h"
#include "content/destination.h"
#include "report/debug_log.h"
#include "report/guard.h"
#include "report/termination_lines.h"

namespace zelvo {

RefferredCidCollection::RefferredCidCollection(const XmlNode& node, const std::string& wholeType,
                                               const Lines& lines)
    : lines_(lines), whole_(node, wholeType) {}

void RefferredCidCollection::addToExtract(std::unique_ptr<RefferredCid> cid) {
    if (cid == nullptr || cid->type.empty()) {
        return;
    }
    if (isSafeOffset(cid->offset)) {
        whole_.addReferredCid(cid.get());
    }
    toExtract_.push_back(std::move(cid));
}

void RefferredCidCollection::Extract(ContentUnpacker& unpacker) {
    theDebugLog->log(std::string(lines_.begin));
    if (!whole_.type.empty() && whole_.hasReferredCids()) {
        theDebugLog->log(std::string(lines_.whole));
        guarded(
            [&] { refuseNamelessMembers([&] { extractWhole(unpacker, whole_, includes()); }); });
    }
    for (const auto& cid : toExtract_) {
        checkProgramTerminated();
        const Failure failure = failureOf(*cid);
        contentGuarded(*failure, [&] {
            if (whole_.holds(*cid)) {
                finishPart(unpacker, *cid);
            } else {
                extractPart(unpacker, *cid);
            }
        });
    }
    theDebugLog->log(std::string(lines_.end));
}

std::vector<const RefferredCid*> RefferredCidCollection::taken() const {
    std::vector<const RefferredCid*> parts;
    for (const auto& cid : toExtract_) {
        if (whole_.holds(*cid)) {
            parts.push_back(cid.get());
        }
    }
    return parts;
}

ContentUnpacker::Paths RefferredCidCollection::includes() const {
    const std::vector<const RefferredCid*> parts = taken();
    const bool isPartEverything = std::any_of(
        parts.begin(), parts.end(), [](const RefferredCid* part) { return part->offset.empty(); });
    return isPartEverything ? ContentUnpacker::Paths() : whole_.getIncludes();
}

}  // namespace zelvo
