// What may fail without ending the operation that it is a part of.
#pragma once

#include <string>

#include "commons/exception.h"
#include "commons/termination.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

// Runs work; a failure is handed to known, any other exception calls unknown. A request to stop
// passes. Returns whether the work went through.
template <class Work, class Known, class Unknown>
bool tolerated(Work&& work, Known&& known, Unknown&& unknown) {
    try {
        work();
        return true;
    } catch (const ExTraceable& failure) {
        known(failure);
    } catch (const MigrationTerminatedException&) {
        throw;
    } catch (...) {
        unknown();
    }
    return false;
}

// The same where one text tells both: told gets the reason, or what an unknown one is called.
template <class Work, class Told>
bool toleratedInWords(Work&& work, const std::string& unknownReason, Told&& told) {
    return tolerated(
        work, [&](const ExTraceable& failure) { told(failure.what()); },
        [&] { told(unknownReason); });
}

// Runs work; a failure is logged and raised as one of the repository. what: stands in front of the
// reason.
template <class Work>
void inRepositoryWords(const std::string& what, Work&& work) {
    try {
        work();
    } catch (const ExTraceable& failure) {
        LogError(std::string("Error: ") + failure.what());
        throw EXC_INNER(RepositoryError, failure) % (what + failure.what());
    }
}

}  // namespace zelvo
