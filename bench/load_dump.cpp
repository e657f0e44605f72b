// bench-load-dump SESSION ARCHIVE USER DATABASE: loads the dump of a database of MySQL on this
// machine as the restore of its content does, and does nothing else. ARCHIVE: below the session.
// USER: of the server, whose password is "secret". Runs in a panel.
#include <cstdio>
#include <exception>

#include "commons/session.h"
#include "content/regular_unpacker.h"
#include "report/debug_log.h"

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fputs("usage: bench-load-dump SESSION ARCHIVE USER DATABASE\n", stderr);
        return 2;
    }
    try {
        const zelvo::SessionLifetimeController session(argv[1]);
        const zelvo::DebugLogLifetimeController debugLog(false, false);
        zelvo::Cid cid;
        cid.path = ".";
        cid.files = {argv[2]};
        zelvo::RegularUnpacker().unpackDb(cid, {"mysql", argv[3], "secret", "localhost", ""},
                                          argv[4]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-load-dump: %s\n", failure.what());
        return 1;
    }
}
