// The names of the directories that content is unpacked into, and of its places in archives.
#pragma once

#include <string>

namespace zelvo {

// The destination without the offset that it ends in, or as it is: an archive holds the offset as
// a path inside, so it has to be unpacked above it. Only whole components are taken off. offset:
// may be empty.
std::string aboveOffset(const std::string& destination, const std::string& offset);

// Where a part is after it was unpacked with this offset for this destination.
std::string placeOfPart(const std::string& destination, const std::string& offset);

// Raises UnsafeName for an offset that would have a part unpacked above a directory. destination:
// below that directory, or it.
void requireUnpackedBelow(const std::string& directory, const std::string& destination,
                          const std::string& offset);

// True for a place inside an archive that can stand in a list of members, and has no "..". GNU tar
// takes a line that begins with "-", also behind blanks, for an option, a line feed for the end of
// a member's name, and a backslash for the start of an escape, which can stand for any of these.
// Empty is safe.
bool isSafeOffset(const std::string& offset);

// The directory of a domain. domain: its name in UTF-8. Raises IDNConversationError for a name that
// has no ASCII form, UnsafeName for one whose ASCII form is no single directory.
std::string getVhostDir(const std::string& domain);

// The directory of a subdomain. vhostDir: that of its domain. name: what stands before the domain,
// in UTF-8. Raises as getVhostDir.
std::string getSubdomainDir(const std::string& vhostDir, const std::string& name);

// ---- Mail. The names are taken as they are.

std::string getDomainMailDir(const std::string& domain);
std::string getMaildir(const std::string& domain, const std::string& mailName);
// The data of the spam filter.
std::string getSpamDir(const std::string& domain, const std::string& mailName);
// The archives of all mail lists; ends in "/".
std::string getListArchivesDir();
std::string getListMboxDir(const std::string& listName);

}  // namespace zelvo
