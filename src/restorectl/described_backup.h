// How the commands describe a backup.
#pragma once

#include <string>

#include "repository/repository.h"
#include "restorectl/report.h"

namespace zelvo {

// Whether a path is of a structured backup, an info document, and not of an archive.
bool isStructured(const std::string& path);

// "YYYY-MM-DD HH:MM", local time; empty for none.
std::string dateOf(const CreationDateMixin& date);

// The words of verdicts, each with its message and what it is about; empty for none.
std::string verdictOf(const std::vector<ValidationResult>& results);
bool isSound(const std::vector<ValidationResult>& results);
// Whether nothing hindered the check itself.
bool isChecked(const std::vector<ValidationResult>& results);

// The oldest first.
void sortByDate(std::vector<BackupInfo>& backups);

// All files of a backup, with the directories of its items, in the order of their names or parts.
// path: in the repository.
Paths filesOf(tRepository& repository, const std::string& path);

}  // namespace zelvo
