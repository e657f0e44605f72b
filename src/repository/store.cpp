// The half of tRepository that brings files to their place and back.
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

}  // namespace

void tRepository::Put(const std::string& localFile, const std::string& repoFile) {
    log("Put file from " + localFile + " to " + repoFile);
    std::ifstream in = openLocalFile(localFile);
    const std::unique_ptr<orepostream> out = openToWrite(repoFile);
    inWords<&StreamPipeError>(localFile + " to " + repoFile + ":\n", [&] {
        Pipe(in, *out);
        out->close();
    });
}

void tRepository::Get(const std::string& repoFile, const std::string& localFile) {
    log("Get file from " + repoFile + " to " + localFile);
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
    try {
        noteNew(path);
        std::unique_ptr<orepostream> out = transport_->PutFile(path);
        out->open();
        return out;
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(StreamError, failure) % ("Unable to open " + path);
    }
}

void tRepository::noteNew(const std::string& path) {
    if (transaction_->IsStarted()) {
        NewEntries entries(*transport_);
        entries.note(path);
        AddFilesToTransaction("", entries.made());
    }
}

std::unique_ptr<irepostream> tRepository::openToRead(const std::string& path) {
    try {
        std::unique_ptr<irepostream> in = transport_->GetFile(path);
        in->open();
        return in;
    } catch (const ExTraceable& failure) {
        throw EXC_INNER(StreamError, failure) % ("Unable to open " + path);
    }
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
