#include "repository/archive_extraction.h"

#include <boost/algorithm/string/join.hpp>

#include "exec/excerpt.h"
#include "exec/fenced.h"
#include "exec/told_name.h"
#include "repository/archive_formats.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/tar_command.h"

namespace zelvo {

namespace {

tLogExecCmd makeTar() {
    tLogExecCmd tar(TAR_UTIL);
    // Else names that are not ASCII would be told with escapes.
    tar.setEnv("LC_ALL", "C.UTF-8");
    return tar;
}

tLogExecCmd tarInto(const std::string& dest, MemberAttributes attributes) {
    tLogExecCmd tar = makeTar();
    // tar would read a "\" in the directory as the start of an escape; a list of names is written
    // so.
    tar << "-xv"
        << "--no-unquote"
        << "-C" << dest << "--unquote";
    if (attributes == MemberAttributes::kDropped) {
        tar << "--no-same-owner"
            << "--no-same-permissions"
            << "--no-overwrite-dir"
            << "--keep-directory-symlink";
    }
    return tar;
}

// The name of a member as a pattern that matches nothing else. tar takes one "\" of two away before
// the pattern is read.
std::string withoutWildcards(const std::string& member) {
    std::string pattern;
    for (const char c : member) {
        pattern += std::string("*?[\\").find(c) == std::string::npos ? "" : "\\\\";
        pattern += c == '\\' ? "\\\\" : std::string(1, c);
    }
    return pattern;
}

// A member as tar takes it: what begins with "-", in a list also behind blanks, would be an option.
std::string memberPattern(const std::string& member) {
    relativePath(member);
    std::string pattern = withoutWildcards(member);
    const std::size_t start = pattern.find_first_not_of(" \t\v\f");
    if (start != std::string::npos && pattern[start] == '-') {
        pattern.replace(start, 1, "[-]");
    }
    return pattern;
}

std::string includeList(const Paths& includes) {
    std::string list;
    for (const std::string& include : SortPaths(includes)) {
        list += memberPattern(include) + "\n";
    }
    return list;
}

// No line of this one is an option.
std::string excludeList(const Paths& excludes) {
    std::string list;
    for (const std::string& exclude : SortPaths(excludes)) {
        relativePath(exclude);
        list.append(exclude).append("\n").append(exclude).append("/*\n");
    }
    return list;
}

using Lists = std::vector<TempFileGuard>;

// Has tar take and leave members; the lists have to live until it has ended.
Lists addLists(tLogExecCmd& tar, const Paths& includes, const Paths& excludes) {
    Lists lists;
    const auto add = [&](const char* option, const std::string& list) {
        lists.push_back(makeTempFile(list));
        tar << "--wildcards" << option + lists.back().path();
    };
    if (!includes.empty()) {
        add("--files-from=", includeList(includes));
    }
    if (!excludes.empty()) {
        add("--exclude-from=", excludeList(excludes));
    }
    return lists;
}

// The code of a pipe is that of its end: of a volume that could not be read to its end, which may
// look like the end of the archive, its reader's complaint alone tells.
bool hasLostInput(const tLogExecCmd& command) {
    return ("\n" + command.stderr).find("\ncat: ") != std::string::npos;
}

// What the command said, shortened: an archive of many members can have one for each.
std::string complaints(const tLogExecCmd& command) {
    std::string text = command.stderr;
    Excerpt(text, "").shorten();
    return text;
}

// Runs tar on the volumes and fills result. whatFailed: the text of the failure. withReason: what
// the command said comes behind that.
void extract(tLogExecCmd tar, const Paths& volumes, const std::string& dest,
             const std::string& whatFailed, bool withReason, Paths& result) {
    ArchiverRun run = SendFilesToTar(tar, volumes);
    if (execFenced(run.command, dest, std::nothrow) != 0 || hasLostInput(run.command)) {
        throw EXC(tRepository::ArchiverError) %
            (whatFailed + (withReason ? complaints(run.command) : ""));
    }
    result = namesOfListing(run.command.stdout);
}

std::string extractionFailure(const Paths& volumes) {
    return "unable to extract files from " + boost::join(volumes, ", ");
}

}  // namespace

void ExtractArchive(const Paths& volumes, const std::string& dest, const Paths& includes,
                    const Paths& excludes, Paths& result, MemberAttributes attributes) {
    tLogExecCmd tar = tarInto(dest, attributes);
    const Lists lists = addLists(tar, includes, excludes);
    extract(tar, volumes, dest, "from " + boost::join(volumes, " ") + " to " + dest + ":\n", true,
            result);
}

Paths ListArchive(const Paths& volumes, const Paths& includes) {
    tLogExecCmd tar = makeTar();
    tar << "-t";
    const Lists lists = addLists(tar, includes, Paths());
    ArchiverRun run = SendFilesToTar(tar, volumes);
    run.command.exec(std::nothrow);
    return namesOfListing(run.command.stdout);
}

void ExtractArchiveRoot(const Paths& volumes, const std::string& dest, Paths& result) {
    tLogExecCmd tar = tarInto(dest, MemberAttributes::kDropped);
    tar << "--exclude=*/*";
    extract(tar, volumes, dest, extractionFailure(volumes), false, result);
}

void ExtractArchiveSubDir(const Paths& volumes, const std::string& dest, const std::string& subdir,
                          Paths& result) {
    tLogExecCmd tar = tarInto(dest, MemberAttributes::kDropped);
    tar << "--wildcards" << memberPattern(subdir) + "/*";
    extract(tar, volumes, dest, extractionFailure(volumes), false, result);
}

}  // namespace zelvo
