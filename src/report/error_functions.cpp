#include "report/error_functions.h"

#include <typeinfo>

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

// A failure that is raised where it is seen has a class of its own.
bool wasTold(const ExTraceable& failure) { return typeid(failure) == typeid(ExTraceable); }

void forgetFailure() {
    if (theLog != nullptr) {
        theLog->forgetLeftObject();
    }
}

}  // namespace zelvo
