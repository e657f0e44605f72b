#include "content/content_failure.h"

#include <stdexcept>

#include "content/content_errors.h"
#include "report/debug_log.h"
#include "report/result_log.h"

namespace zelvo {

void tellContentFailure(ExTaggedIncludable& outer, const ExTraceable& cause) {
    outer.causedBy(cause);
    theDebugLog->log(cause);
    if (theLog != nullptr) {
        theLog->log(outer);
    }
}

bool contentGuarded(ExTaggedIncludable& outer, const std::function<void()>& work) {
    try {
        refuseNamelessMembers(work);
        return true;
    } catch (const ExTraceable& cause) {
        tellContentFailure(outer, cause);
        return false;
    }
}

const std::vector<std::string>& requireUnpacked(const std::vector<std::string>& paths) {
    if (paths.empty()) {
        throw EXC(UnExpectedResult) % "the archive holds nothing or could not be unpacked in full";
    }
    return paths;
}

void refuseNamelessMembers(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::out_of_range&) {
        throw EXC(UnExpectedResult) % "the archive holds nothing, or a member without a name";
    }
}

}  // namespace zelvo
