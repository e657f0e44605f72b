// The half of tRepository that copies archives to other repositories.
#include <algorithm>

#include "repository/file_parts.h"
#include "repository/repository.h"
#include "repository/repository_log.h"
#include "repository/tolerated.h"
#include "repository/urls.h"

namespace zelvo {

void tRepository::PackedExportToRepo(const std::string& path, tRepository& target,
                                     const std::string& targetPath) {
    LogStep(logPrefix_ + "Export file from " + path + " to " + target.place() + "/" + targetPath);
    if (targetPath.empty()) {
        throw EXC(RepositoryError) % "destination path path is empty";
    }
    if (path.empty()) {
        throw EXC(RepositoryError) % "path to exporting file is empty";
    }
    if (target.transport().IsExist(targetPath)) {
        throw EXC(RepositoryError) % ("file " + targetPath + " exists");
    }
    inRepositoryWords("unable to export file: ", [&] {
        const Paths parts = GetFileParts(*transport_, path);
        Paths targets(parts.size());
        std::transform(parts.begin(), parts.end(), targets.begin(), [&](const std::string& part) {
            return targetPath + part.substr(path.size());
        });
        copyParts(parts, target, targets);
    });
}

// Half an archive would stand in the way of the next export, and some of its parts would be taken
// for those of another.
void tRepository::copyParts(const Paths& parts, tRepository& target, const Paths& targets) {
    for (const std::string& part : targets) {
        if (target.transport().IsExist(part)) {
            throw EXC(RepositoryError) % ("file " + part + " exists");
        }
    }
    tFilesTransaction copied(target.transport());
    copied.Begin();
    try {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::unique_ptr<irepostream> in = openToRead(parts[i]);
            copied.AddCreatedFile(targets[i]);
            target.AddFilesToTransaction("", {targets[i]});
            target.transport().PutFile(*in, targets[i]);
            in->close();
        }
    } catch (...) {
        copied.Rollback();
        throw;
    }
}

void tRepository::PackedExport(const std::string& path, const std::string& url,
                               const std::string& password, bool passive) {
    std::string name;
    std::unique_ptr<tRepository> target;
    try {
        target = GetFileRepository(url, password, passive, name);
    } catch (const ExTraceable& failure) {
        LogError(std::string("Error: ") + failure.what());
        throw EXC_INNER(RepositoryError, failure) %
            ("unable to connect to repository " + GetUrlPlace(url) + " " + failure.what());
    }
    PackedExportToRepo(path, *target, name);
}

}  // namespace zelvo
