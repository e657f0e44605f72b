#include "repository/archive_listing.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>

#include "commons/path_steps.h"
#include "exec/told_name.h"
#include "repository/archive_formats.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/tar_command.h"

namespace zelvo {

namespace {

// As deep as a directory may be that is packed.
constexpr int kMaxDepth = 64;

[[noreturn]] void refuseMember(const std::string& member, const std::string& reason) {
    throw ImportException(
        EXC(ImportError) % ("Dump has wrong format. Member '" + member + "' " + reason),
        DumpImportStatus::kNew);
}

// What tar prints of an archive.
std::string list(const Paths& volumes, const char* option) {
    tLogExecCmd tar(TAR_UTIL);
    // Else names that are not ASCII would be told with escapes.
    tar.setEnv("LC_ALL", "C.UTF-8");
    tar << option;
    ArchiverRun run = SendFilesToTar(tar, volumes);
    if (run.command.exec(std::nothrow) != 0) {
        throw EXC(tRepository::ArchiverError) %
            ("unable to list files of " + boost::join(volumes, ", "));
    }
    return run.command.stdout;
}

void requirePlain(const std::string& longListing) {
    Paths lines;
    boost::split(lines, longListing, boost::is_any_of("\n"));
    for (const std::string& line : lines) {
        if (!line.empty() && line[0] != '-' && line[0] != 'd') {
            refuseMember(line, "is neither a file nor a directory");
        }
    }
}

// Whether a component begins with "\", which a transport takes from the front of a path: the name
// would be another one where that component comes first.
bool hasBackslashStep(const std::string& member) {
    return ("/" + member).find("/\\") != std::string::npos;
}

void requireInsideDestination(const std::string& member) {
    if (member.empty() || member[0] == '/' || hasParentStep(member) || hasBackslashStep(member) ||
        hasControlCharacter(member)) {
        refuseMember(member, "is no name of a repository");
    }
    if (std::count(member.begin(), member.end(), '/') > kMaxDepth) {
        refuseMember(member, "is too deep");
    }
    if (("/" + member).find("/./") != std::string::npos) {
        refuseMember(member, "is written with a './'");
    }
}

}  // namespace

Paths ListPlainArchive(const Paths& volumes) {
    // The long form tells the types and the short one the names: what stands between them in a line
    // is of the author's making, too.
    requirePlain(list(volumes, "-tv"));
    Paths members = namesOfListing(list(volumes, "-t"));
    for (const std::string& member : members) {
        requireInsideDestination(member);
    }
    return members;
}

}  // namespace zelvo
