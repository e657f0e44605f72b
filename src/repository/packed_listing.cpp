// The half of tRepository that lists packed backups.
#include <algorithm>
#include <boost/regex.hpp>
#include <limits>
#include <map>

#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/tolerated.h"

namespace zelvo {

namespace {

// Runs an operation on the mask. Raises RepositoryError for one that is no regular expression, or
// one that takes for ever.
template <class Operation>
auto onMask(const std::string& mask, Operation&& operation) {
    try {
        return operation();
    } catch (const std::runtime_error& failure) {
        throw EXC(RepositoryError) % ("mask '" + mask + "' is refused: " + failure.what());
    }
}

std::vector<FileInfo> filesIn(tRepositoryTransport& transport, const std::string& dir) {
    std::vector<FileInfo> files;
    transport.ListDirEx(dir, files);
    std::erase_if(files, [](const FileInfo& file) { return file.isDirectory; });
    return files;
}

// In order, so that an archive stands right in front of its parts.
using SizesByName = std::multimap<std::string, std::uint64_t>;

SizesByName sizesByName(const std::vector<FileInfo>& files) {
    SizesByName sizes;
    for (const FileInfo& file : files) {
        sizes.emplace(file.name, file.size);
    }
    return sizes;
}

// In bytes, with the parts of the archive.
long sizeOfArchive(const std::string& name, const SizesByName& all) {
    std::uint64_t size = 0;
    unsigned number = 0;
    for (auto part = all.lower_bound(name); part != all.end() && part->first.starts_with(name);
         ++part) {
        if (IsSplittedPart(name, part->first, number)) {
            size = sumOfSizes(size, part->second);
        }
    }
    constexpr std::uint64_t kMost = std::numeric_limits<long>::max();
    return static_cast<long>(std::min(size, kMost));
}

// all: the listing of dir, with the parts of the archive.
BackupInfo GetBackupInfoFromFile(const std::string& dir, const FileInfo& file,
                                 const SizesByName& all) {
    LogMsg("Get backup info from file");
    BackupInfo info;
    SetBackupNameFromPath(joinPath(dir, file.name), info);
    info.size = sizeOfArchive(file.name, all);
    toleratedInWords([&] { SetDateFromPath(info, info.path); }, "unknown error",
                     [&](const std::string&) { info.SetDateTime(file); });
    return info;
}

}  // namespace

void tRepository::PackedBackupsList(const std::string& dir, const std::string& mask,
                                    std::vector<BackupInfo>& result) {
    log("List packed backups at " + dir);
    const boost::regex wanted =
        onMask(mask, [&] { return boost::regex(mask.empty() ? ".*" : mask); });
    const std::vector<FileInfo> files = filesIn(*transport_, dir);
    const SizesByName sizes = sizesByName(files);
    for (const FileInfo& file : files) {
        const bool isMasked = onMask(mask, [&] { return boost::regex_match(file.name, wanted); });
        if (isMasked && IsFtpDumpName(file.name)) {
            result.push_back(GetBackupInfoFromFile(dir, file, sizes));
        }
    }
}

BackupInfo tRepository::GetPackedBackupInfo(const std::string& path) {
    log("Get packed backup info from file " + path);
    const std::vector<FileInfo> files = filesIn(*transport_, parentOf(path));
    const auto file = std::find_if(files.begin(), files.end(), [&](const FileInfo& info) {
        return info.name == fileNameOf(path);
    });
    if (file == files.end()) {
        throw EXC(RepositoryError) % ("File '" + path + "' not found");
    }
    return GetBackupInfoFromFile(parentOf(path), *file, sizesByName(files));
}

}  // namespace zelvo
