#include "content/repository_unpacker.h"

#include <algorithm>

#include "commons/errors.h"
#include "commons/temp_names.h"
#include "commons/termination.h"
#include "content/database_client.h"
#include "content/unpack_directory.h"
#include "report/debug_log.h"
#include "repository/local_files.h"
#include "repository/temp_file_guard.h"

namespace zelvo {

namespace {

// Has a class of its own, since a plain ExTraceable is one that the result log has already.
class UnpackingFailure : public ExTraceable {
  public:
    explicit UnpackingFailure(const std::string& text) : ExTraceable("CantUnpack", "%1%") {
        feed(text);
    }
    UnpackingFailure* clone() const override { return new UnpackingFailure(*this); }
};

// The messages of a failure and of all that caused it.
class Reasons : public ExInfoVisitor {
  public:
    void setCode(const std::string&) override {}
    void setMessage(const std::string& message) override {
        text_ += (text_.empty() ? "" : ": ") + message;
    }
    void setContext(const std::string&) override {}
    void setFile(const std::string&) override {}
    void setLine(int) override {}
    void advanceToInnerException() override {}

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

[[noreturn]] void raise(const std::string& what, const std::string& reason) {
    throw UnpackingFailure(what + ": " + reason);
}

// Runs work; its failure is raised as what, with the reason. unknown: the reason where there is
// none.
template <class Work>
auto inWords(const std::string& what, const std::string& unknown, Work&& work) {
    try {
        return work();
    } catch (const MigrationTerminatedException&) {
        throw;
    } catch (const ExTraceable& failure) {
        theDebugLog->log(failure);
        Reasons reasons;
        failure.accept(reasons);
        raise(what, reasons.text());
    } catch (const std::exception& failure) {
        theDebugLog->log(std::string(failure.what()));
        raise(what, failure.what());
    } catch (...) {
        raise(what, unknown);
    }
}

ContentUnpacker::Paths volumesOf(const Cid& cid) {
    ContentUnpacker::Paths volumes(cid.files.size());
    std::transform(cid.files.begin(), cid.files.end(), volumes.begin(),
                   [&cid](const std::string& file) {
                       return RepositoryUnpacker::makeRepositoryPath(cid.path) + "/" + file;
                   });
    return RepositoryUnpacker::makeRepositoryPaths(volumes);
}

}  // namespace

std::string RepositoryUnpacker::makeRepositoryPath(const std::string& path) {
    theDebugLog->log("Was path '" + path + "', and repopath '" + path + "'");
    return path;
}

ContentUnpacker::Paths RepositoryUnpacker::makeRepositoryPaths(const Paths& paths) {
    Paths made(paths.size());
    std::transform(paths.begin(), paths.end(), made.begin(), makeRepositoryPath);
    return made;
}

ContentUnpacker::Paths RepositoryUnpacker::unpackTar(const Cid& cid, const std::string& destination,
                                                     const Paths& includes) {
    return unpack(cid, destination, includes, MemberAttributes::kKept);
}

ContentUnpacker::Paths RepositoryUnpacker::unpack(const Cid& cid, const std::string& destination,
                                                  const Paths& includes,
                                                  MemberAttributes attributes) {
    theDebugLog->log("repositoryUnpacker:unpack '" + cid.str() + "' to '" + destination + "'");
    if (!includes.empty()) {
        theDebugLog->log(std::string("Includes:"));
        for (const std::string& include : includes) {
            theDebugLog->log(include);
        }
    }
    return inWords("Cannot unpack", "unknown error", [&] {
        return repository_->Unpack(volumesOf(cid), destination, includes, attributes);
    });
}

void RepositoryUnpacker::extractPart(const Cid& cid, const std::string& destination) {
    theDebugLog->log("repositoryUnpacker:extract '" + cid.str() + "' to '" + destination + "'");
    inWords("Cannot extractPart", "unknow error", [&] {
        const Paths volumes = volumesOf(cid);
        if (volumes.empty()) {
            throw EXC(tRepository::ArchiverError) % "no files to extract";
        }
        if (volumes.size() == 1) {
            repository_->Get(makeRepositoryPath(volumes.front()), destination);
        } else {
            joinVolumes(volumes, destination);
        }
    });
}

void RepositoryUnpacker::joinVolumes(const Paths& volumes, const std::string& destination) {
    NewLocalFile whole(destination);
    const TempFileGuard part(RMK_getTempFileName("", "extract"));
    for (const std::string& volume : volumes) {
        repository_->Get(volume, part.path());
        std::ifstream in = openLocalFile(part.path());
        Pipe(in, whole.stream());
    }
    whole.finish();
}

void RepositoryUnpacker::unpackDb(const Cid& cid, const DbServerAccess& server,
                                  const std::string& database) {
    theDebugLog->log("repositoryUnpacker:unpackDb " + cid.str());
    inWords("Cannot unpackDb", "unknown error", [&] {
        if (server.type == "mssql") {
            throw EXC(NotSupportedOperation) % "unpackDb mssql database";
        }
        const UnpackDirectory temporary;
        // Nobody else is to come to a dump because of what the archive says of owners and modes.
        const Paths names = unpack(cid, temporary.path(), Paths(), MemberAttributes::kDropped);
        loadDatabase(server, database, temporary.path(), names, NoDefaults::kFirst);
    });
}

}  // namespace zelvo
