#include "report/error_functions.h"

#include "report/debug_log.h"
#include "report/result_log.h"

namespace zelvo {

void deploy_error_func(const ExTraceable& failure) {
    if (theDebugLog != nullptr) {
        theDebugLog->log(failure);
    }
    if (theLog != nullptr) {
        theLog->log(failure);
    }
}

void deploy_error_func_throw(const ExTraceable& failure) {
    deploy_error_func(failure);
    throw ExTraceable(failure);
}

void forgetFailure() {
    if (theLog != nullptr) {
        theLog->forgetLeftObject();
    }
}

}  // namespace zelvo
