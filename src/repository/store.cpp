// The half of tRepository that brings files to their place and back.
#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <sstream>

#include "repository/local_files.h"
#include "repository/new_entries.h"
#include "repository/path_guard.h"
#include "repository/repository.h"

namespace zelvo {

namespace {

// Runs an operation on streams; its failure is raised as that of the tag, with the reason behind
// what.
template <ErrorTag tag, class Operation>
void inWords(const std::string& what, Operation&& operation) {
    try {
        operation();
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(*tag, failure) % (what + failure.what());
    } catch (const StreamException& failure) {
        throw EXC(*tag) % (what + failure.what());
    }
}

// Runs an operation that opens a file of the repository, and returns its result; its failure is
// raised as StreamError.
template <class Operation>
auto inOpening(const std::string& path, Operation&& operation) {
    try {
        return operation();
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(tRepository::StreamError, failure) % ("Unable to open " + path);
    }
}

// A pipe has no size that could be told beforehand.
bool isRegular(const std::string& path) {
    boost::system::error_code error;
    return boost::filesystem::is_regular_file(path, error);
}

}  // namespace

void tRepository::Put(const std::string& localFile, const std::string& repoFile) {
    log("Put file from " + localFile + " to " + repoFile);
    putAs(localFile, repoFile, repoFile);
}

void tRepository::putAs(const std::string& localFile, const std::string& writtenFile,
                        const std::string& repoFile) {
    std::ifstream in = openLocalFile(localFile);
    const std::unique_ptr<orepostream> out = openToWrite(writtenFile);
    inWords<&StreamPipeError>(localFile + " to " + repoFile + ":\n", [&] {
        if (!isRegular(localFile) || !transport_->SendFile(localFile, writtenFile)) {
            Pipe(in, *out);
            out->close();
        }
    });
}

void tRepository::Get(const std::string& repoFile, const std::string& localFile) {
    log("Get file from " + repoFile + " to " + localFile);
    // Elsewhere what is there must outlive a fetch that fails.
    if (isNewOrEmpty(localFile) &&
        inOpening(repoFile, [&] { return transport_->FetchFile(repoFile, localFile); })) {
        return;
    }
    const std::unique_ptr<irepostream> in = openToRead(repoFile);
    NewLocalFile out(localFile);
    inWords<&StreamPipeError>(repoFile + " to " + localFile + ":\n", [&] {
        Pipe(*in, out.stream());
        in->close();
        out.finish();
    });
}

void tRepository::PutInfo(const std::string& repoFile, const std::string& text) {
    log("Put info to " + repoFile);
    const std::unique_ptr<orepostream> out = openToWrite(repoFile);
    inWords<&StreamError>("Unable to write " + repoFile + ": ", [&] {
        *out << text;
        out->close();
    });
}

std::string tRepository::GetInfo(const std::string& repoFile) {
    log("Get info from " + repoFile);
    const std::unique_ptr<irepostream> in = openToRead(repoFile);
    std::ostringstream text;
    inWords<&StreamError>("Unable to read " + repoFile + ": ", [&] {
        Pipe(*in, text);
        in->close();
    });
    return text.str();
}

std::unique_ptr<orepostream> tRepository::openToWrite(const std::string& path) {
    return inOpening(path, [&] {
        noteNew(path);
        std::unique_ptr<orepostream> out = transport_->PutFile(path);
        out->open();
        return out;
    });
}

void tRepository::noteNew(const std::string& path) {
    if (transaction_->IsStarted()) {
        NewEntries entries(*transport_);
        entries.note(path);
        AddFilesToTransaction("", entries.made());
    }
}

std::unique_ptr<irepostream> tRepository::openToRead(const std::string& path) {
    return inOpening(path, [&] {
        std::unique_ptr<irepostream> in = transport_->GetFile(path);
        in->open();
        return in;
    });
}

void tRepository::CreateDir(const std::string& path) {
    log("Create dir " + path);
    noteNew(joinPath(path, ""));
    transport_->CreateDir(path);
}

void tRepository::DeleteDir(const std::string& path) {
    log("Delete dir " + path);
    transport_->DeleteDir(path);
}

void tRepository::AddFilesToTransaction(const std::string& dir, const Paths& files) {
    for (const std::string& file : files) {
        const std::string path = joinPath(dir, file);
        if (path.ends_with('/')) {
            transaction_->AddCreatedDir(path.substr(0, path.size() - 1));
        } else {
            transaction_->AddCreatedFile(path);
        }
    }
}

}  // namespace zelvo
