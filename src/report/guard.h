// The guards around one piece of a restore: what becomes of a failure in it. They hold for what is
// an ExTraceable; a request to stop and the failures of the run itself pass all of them but
// silenced. What deploy_error_func_throw has told is not told again. They need theDebugLog.
#pragma once

#include "commons/exception.h"
#include "report/debug_log.h"
#include "report/error_functions.h"

namespace zelvo {

// Runs work; a failure goes to deploy_error_func, and the run goes on. Returns whether the work
// went through.
template <class Work>
bool guarded(Work&& work) {
    try {
        work();
        return true;
    } catch (const ExTraceable& failure) {
        if (wasTold(failure)) {
            forgetFailure();
        } else {
            deploy_error_func(failure);
        }
        return false;
    }
}

// Runs work; a failure goes to the debug log alone. Returns whether the work went through.
template <class Work>
bool debugLogged(Work&& work) {
    try {
        work();
        return true;
    } catch (const ExTraceable& failure) {
        if (!wasTold(failure)) {
            theDebugLog->log(failure);
        }
        forgetFailure();
        return false;
    }
}

// Runs work; whatever it raises is dropped without a word: it has been told already, or the object
// is better off with what it has.
template <class Work>
void silenced(Work&& work) {
    try {
        work();
    } catch (...) {
        forgetFailure();
    }
}

// Runs work; a failure is raised anew as the cause of outer, which is EXC(...) with its arguments,
// so that its place is the caller's. beforeRaising: what is done first.
template <class Outer, class Work, class Salvage>
void wrapped(Outer&& outer, Work&& work, Salvage&& beforeRaising) {
    try {
        work();
    } catch (const ExTraceable& failure) {
        forgetFailure();
        beforeRaising();
        outer.causedBy(failure);
        throw outer;
    }
}

template <class Outer, class Work>
void wrapped(Outer&& outer, Work&& work) {
    wrapped(outer, work, [] {});
}

}  // namespace zelvo
