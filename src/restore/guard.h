// The guard around one piece of a restore: what fails in it is logged, and the run goes on.
#pragma once

#include "commons/exception.h"
#include "report/error_functions.h"

namespace zelvo {

// Runs work. An ExTraceable that leaves it goes to deploy_error_func; anything else passes.
template <class Work>
void guarded(Work&& work) {
    try {
        work();
    } catch (const ExTraceable& failure) {
        deploy_error_func(failure);
    }
}

}  // namespace zelvo
