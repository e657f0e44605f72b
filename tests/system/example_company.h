// The examples as a test restores them.
#pragma once

#include "process.h"
#include "sandbox.h"
#include "temp_dir.h"

#include <filesystem>
#include <stdexcept>
#include <string>

// Puts the archives of an example into the session. They are made once.
inline void addExampleArchives(const Sandbox& box, const std::string& name = "hosting-company") {
    static const TempDir all = TempDir::inMemory();
    const std::string made = all.path(name);
    if (!std::filesystem::exists(made)) {
        const ProcessResult making =
            Process({SOURCE_DIR "/examples/" + name + "/make-archives", made},
                    {"PATH=/usr/bin:/bin"})
                .wait();
        if (making.exitStatus != 0) throw std::runtime_error("make-archives: " + making.err);
    }
    std::filesystem::copy(made, box.sessionDir(), std::filesystem::copy_options::recursive);
}
