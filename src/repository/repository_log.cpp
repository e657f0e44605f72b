#include "repository/repository_log.h"

#include "report/debug_log.h"

namespace zelvo {

namespace {

template <class T>
void tell(const T& what) {
    if (theDebugLog != nullptr) {
        theDebugLog->log(what);
    }
}

}  // namespace

void LogMsg(const std::string& text) { tell(text); }
void LogMsg(const ExTraceable& failure) { tell(failure); }

void LogVerboseMsg(const std::string& text) {
    if (theDebugLog != nullptr && (theDebugLog->isVerboseMode() || theDebugLog->isDebugMode())) {
        theDebugLog->log(text);
    }
}

void LogStep(const std::string& text) { tell(text); }
void LogError(const std::string& text) {
    if (theDebugLog != nullptr) {
        theDebugLog->error(text);
    }
}

}  // namespace zelvo
