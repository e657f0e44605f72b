// What a run has, for tests: a session, a debug log that is kept in memory, a way to fail.
#pragma once

#include "commons/errors.h"
#include "commons/session.h"
#include "panel_box.h"
#include "recording_log.h"

namespace test {

// A session in a directory of its own, whose name has all that a configuration file, a URI or a
// shell could take for syntax.
struct Session {
    std::string file(const std::string& name) const { return contentOf(path + "/" + name); }
    // Makes every save into the session fail.
    void remove() const { std::filesystem::remove_all(path); }

    TempDir dir;
    std::string path = dir.path("a#b=c${HOME}\\ %41 'd'");
    zelvo::SessionLifetimeController controller{path};
};

// A failure with a place that the tests can spell, and its cause.
template <class... Cause>
auto failure(const std::string& what, const Cause&... cause) {
    return zelvo::Exc<&zelvo::NotSupportedOperation>("void f()", "./f.cpp", 7, cause...) % what;
}

}  // namespace test
