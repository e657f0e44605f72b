// The example company as a test restores it.
#pragma once

#include "process.h"
#include "sandbox.h"
#include "temp_dir.h"

#include <filesystem>
#include <stdexcept>

// Puts the archives of the example into the session. They are made once.
inline void addExampleArchives(const Sandbox& box) {
    static const TempDir made = TempDir::inMemory();
    static const ProcessResult making =
        Process({SOURCE_DIR "/examples/hosting-company/make-archives", made.path("")},
                {"PATH=/usr/bin:/bin"})
            .wait();
    if (making.exitStatus != 0) throw std::runtime_error("make-archives: " + making.err);
    std::filesystem::copy(made.path(""), box.sessionDir(),
                          std::filesystem::copy_options::recursive);
}
