// Taking files out of archives of one or more volumes.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// All run tar behind a fence around dest: nothing else is written to. volumes: local files by
// absolute paths, one archive together. dest: absolute, a directory as openDestination takes it.
// result: gets the names of what was extracted, as the archive has them, directories with "/" at
// their end. They raise ArchiverError, also for no volumes at all and for one that could not be
// read; RepositoryError for a first volume that is no archive; CantStatFile. Need theDebugLog.

// What members keep of how they were packed. Dropped: they are root's, without set-user-id bits and
// what else the umask takes away, and a directory that is there stays as it is.
enum class MemberAttributes { kKept, kDropped };

// includes: the names of the members to take, with all that is below them; empty for all. excludes:
// those to leave out, as patterns (GNU tar, --wildcards). None of them may hold a line feed or a
// component ".."; TransportException is raised for one that does.
void ExtractArchive(const std::vector<std::string>& volumes, const std::string& dest,
                    const std::vector<std::string>& includes,
                    const std::vector<std::string>& excludes, std::vector<std::string>& result,
                    MemberAttributes attributes = MemberAttributes::kKept);
// What ExtractArchive would extract, as its result; of an archive that cannot be read to its end
// what stands in front of that. Raises as the others, but no ArchiverError for what cannot be read.
std::vector<std::string> ListArchive(const std::vector<std::string>& volumes,
                                     const std::vector<std::string>& includes);
// What stands at the top of the archive only. Drops the attributes, as the next one does.
void ExtractArchiveRoot(const std::vector<std::string>& volumes, const std::string& dest,
                        std::vector<std::string>& result);
// What stands below a directory of the archive. subdir: as an include.
void ExtractArchiveSubDir(const std::vector<std::string>& volumes, const std::string& dest,
                          const std::string& subdir, std::vector<std::string>& result);

}  // namespace zelvo
