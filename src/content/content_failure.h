// What becomes of a failure to put one content into its place: it costs that content and is told.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commons/exception.h"

namespace zelvo {

// Tells that a content was not restored: outer, around the cause, goes to the result log, if there
// is one, and the cause to the debug log. outer: EXC(tag) with its arguments; it keeps the cause.
// Needs theDebugLog.
void tellContentFailure(ExTaggedIncludable& outer, const ExTraceable& cause);

// Runs work that unpacks; a failure of it is told in the same way, and the run goes on. Returns
// whether the work went through. What is no failure of the content, such as a request to stop,
// passes.
bool contentGuarded(ExTaggedIncludable& outer, const std::function<void()>& work);

// Returns what was unpacked, if it was. Raises UnExpectedResult for nothing, which an unpacker
// gives for an archive without members and for one that it could not unpack in full: why, the debug
// log tells.
const std::vector<std::string>& requireUnpacked(const std::vector<std::string>& paths);

// Runs work that unpacks. Raises what it raises, and UnExpectedResult for the std::out_of_range
// that is raised for an archive with a nameless member: such an archive is no reason to end a run.
void refuseNamelessMembers(const std::function<void()>& work);

}  // namespace zelvo
