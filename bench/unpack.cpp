// bench-unpack SESSION ARCHIVE DESTINATION: unpacks an archive of a session as the restore of its
// content does, and does nothing else. ARCHIVE: below the session. Runs in a panel.
#include <cstdio>
#include <exception>

#include "commons/session.h"
#include "content/regular_unpacker.h"
#include "report/debug_log.h"

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bench-unpack SESSION ARCHIVE DESTINATION\n", stderr);
        return 2;
    }
    try {
        const zelvo::SessionLifetimeController session(argv[1]);
        const zelvo::DebugLogLifetimeController log(false, false);
        zelvo::Cid cid;
        cid.path = ".";
        cid.files = {argv[2]};
        const auto paths =
            zelvo::RegularUnpacker().extractDomainPrivate(cid, argv[3], "popuser", "");
        return paths.size() == 1 ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-unpack: %s\n", failure.what());
        return 1;
    }
}
