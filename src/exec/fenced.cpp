#include "exec/fenced.h"

#include <cstring>

#include "exec/destination_directory.h"
#include "exec/write_fence.h"
#include "report/debug_log.h"
#include "report/error_functions.h"

namespace zelvo {

namespace {

// Runs the command by exec, which has the fence as long as it lasts.
template <class Exec>
int behindFence(tLogExecCmd& command, const std::string& directory, Exec&& exec) {
    const WriteFence fence(openDestination(directory).get(), directory);
    if (fence.isReady()) {
        command.confinement.fence = &fence;
    } else {
        theDebugLog->log("Without a fence around " + directory + " runs " + command.utility + ": " +
                         strerror(fence.error()));
    }
    return exec();
}

}  // namespace

void execFenced(tLogExecCmd& command, const std::string& directory) {
    behindFence(command, directory, [&] { return command.exec(); });
}

int execFenced(tLogExecCmd& command, const std::string& directory, std::nothrow_t) {
    return behindFence(command, directory, [&] {
        try {
            return command.exec();
        } catch (const Exc<&ExecCmd::Failed>& failure) {
            theDebugLog->log(failure);
            forgetFailure();
            return static_cast<int>(command.retCode);
        }
    });
}

}  // namespace zelvo
