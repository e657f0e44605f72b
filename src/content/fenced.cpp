#include "content/fenced.h"

#include <cstring>

#include "content/destination.h"
#include "exec/write_fence.h"
#include "report/debug_log.h"

namespace zelvo {

void execFenced(tLogExecCmd& command, const std::string& directory) {
    const WriteFence fence(openDestination(directory).get(), directory);
    if (fence.isReady()) {
        command.confinement.fence = &fence;
    } else {
        theDebugLog->log("Without a fence around " + directory + " runs " + command.utility + ": " +
                         strerror(fence.error()));
    }
    command.exec();
}

}  // namespace zelvo
