#include "repository/local_files.h"

#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstring>

#include "commons/input_file.h"
#include "repository/repository.h"

namespace zelvo {

namespace {

template <class Stream>
void openStream(Stream& stream, const std::string& file, std::ios::openmode mode) {
    errno = 0;
    stream.open(file, mode | std::ios::binary);
    if (!stream.is_open()) {
        throw EXC(tRepository::StreamError) %
            ("Unable to open " + file + ": " + std::strerror(errno));
    }
}

}  // namespace

std::ifstream openLocalFile(const std::string& path) {
    std::ifstream in;
    // A pipe would be waited for, and a device may have no end.
    if (boost::system::error_code error;
        boost::filesystem::exists(path, error) && !check_input_file(path, true)) {
        throw EXC(tRepository::StreamError) % ("Unable to open " + path + ": not a regular file");
    }
    openStream(in, path, std::ios::in);
    return in;
}

bool isNewOrEmpty(const std::string& path) {
    namespace fs = boost::filesystem;
    boost::system::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    return type == fs::file_not_found ||
           (type == fs::regular_file && fs::file_size(path, error) == 0 && !error);
}

NewLocalFile::NewLocalFile(const std::string& path) : path_(path) {
    openStream(stream_, path, std::ios::out | std::ios::trunc);
}

NewLocalFile::~NewLocalFile() {
    boost::system::error_code error;
    if (!isWhole_ &&
        boost::filesystem::symlink_status(path_, error).type() == boost::filesystem::regular_file) {
        boost::filesystem::remove(path_, error);
    }
}

void NewLocalFile::finish() {
    stream_.close();
    if (stream_.fail()) {
        throw OutputStreamException();
    }
    isWhole_ = true;
}

void copyLocalFile(const std::string& from, const std::string& to) {
    std::ifstream in = openLocalFile(from);
    NewLocalFile out(to);
    try {
        Pipe(in, out.stream());
        out.finish();
    } catch (const StreamException& failure) {
        throw EXC(tRepository::StreamPipeError) % (from + " to " + to + ":\n" + failure.what());
    }
}

}  // namespace zelvo
