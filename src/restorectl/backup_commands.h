// The commands of "restorectl backup". Each runs on the repository of the settings and tells in the
// report what came of it; it raises the repository's failures for what ends all of it.
#pragma once

#include "restorectl/narrator.h"
#include "restorectl/report.h"
#include "restorectl/settings.h"

namespace zelvo {

// Narrator: of the run, whose errors a command may have to tell.
using Command = Report (*)(const Settings&, Narrator&);

// The backups that are there.
Report listBackups(const Settings& settings, Narrator& narrator);
// One backup with its files.
Report showBackup(const Settings& settings, Narrator& narrator);
// Whether backups are sound.
Report checkBackups(const Settings& settings, Narrator& narrator);
// How much room backups take.
Report tellUsage(const Settings& settings, Narrator& narrator);

// A structured backup into an archive elsewhere, and back.
Report exportBackup(const Settings& settings, Narrator& narrator);
Report importBackup(const Settings& settings, Narrator& narrator);
// An archive, with its parts, to another repository.
Report copyArchive(const Settings& settings, Narrator& narrator);

// Both remove nothing in a dry run.
Report deleteBackups(const Settings& settings, Narrator& narrator);
Report rotateBackups(const Settings& settings, Narrator& narrator);

}  // namespace zelvo
