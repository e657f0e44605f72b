// The transfers of a connection: whole files, from and to local ones.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "commons/termination.h"
#include "repository/ftp_connection.h"
#include "repository/ftp_url.h"
#include "repository/repository_log.h"
#include "repository/tolerated.h"

namespace zelvo {

namespace {

struct FileCloser {
    void operator()(FILE* file) const { fclose(file); }
};
using LocalFile = std::unique_ptr<FILE, FileCloser>;

LocalFile openLocal(const std::string& path, const char* mode, const char* purpose) {
    LocalFile file(fopen(path.c_str(), mode));
    if (file == nullptr) {
        LogError(std::string("File open error: ") + strerror(errno));
        throw EXC(tFtpConnection::FileOpenError) % purpose;
    }
    return file;
}

// The server's answer to SIZE (RFC 3659, 4).
constexpr int kNoSuchFile = 550;

// Runs a transfer; undo removes what it left when it failed or the run was asked to stop.
template <class Transfer, class Undo>
CURLcode undoneWhenStopped(Transfer&& transfer, Undo&& undo) {
    CURLcode code = CURLE_OK;
    try {
        code = transfer();
    } catch (const MigrationTerminatedException&) {
        undo();
        throw;
    }
    if (code != CURLE_OK) {
        undo();
    }
    return code;
}

curl_off_t sizeOf(FILE* file) {
    struct stat info {};
    return fstat(fileno(file), &info) == 0 ? info.st_size : -1;
}

}  // namespace

void tFtpConnection::DownloadFile(const std::string& localFile) {
    LogMsg("Ftp download file from " + urlWithoutLogin(url_) + " to " + localFile);
    const CURLcode code =
        undoneWhenStopped([&] { return download(localFile); }, [&] { unlink(localFile.c_str()); });
    CheckCurlRes(code);
}

CURLcode tFtpConnection::download(const std::string& localFile) {
    GetFileName(url_);
    InitCredentials(encodedUrl_);
    set(CURLOPT_FTPLISTONLY, 0L);
    LocalFile file = openLocal(localFile, "wb", "for write");
    set(CURLOPT_WRITEFUNCTION, &tFtpConnection::FileWrite);
    set(CURLOPT_WRITEDATA, file.get());
    const CURLcode code = perform();
    // The last bytes reach the disk here, or find it full.
    const bool isWritten = fclose(file.release()) == 0;
    return code == CURLE_OK && !isWritten ? CURLE_WRITE_ERROR : code;
}

void tFtpConnection::UploadFile(const std::string& localFile) {
    LogMsg("Ftp upload file from " + localFile + " to " + urlWithoutLogin(url_));
    GetShortFileName(url_);
    const LocalFile file = openLocal(localFile, "rb", "for read");
    const curl_off_t size = sizeOf(file.get());
    LogMsg("File size: " + std::to_string(size));
    const CURLcode code =
        undoneWhenStopped([&] { return upload(file.get(), size); }, [this] { dropHalf(); });
    CheckCurlRes(code);
}

CURLcode tFtpConnection::upload(FILE* file, curl_off_t length) {
    InitCredentials(encodedUrl_);
    set(CURLOPT_FTPLISTONLY, 0L);
    set(CURLOPT_READFUNCTION, &tFtpConnection::FileRead);
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_READDATA, file);
    set(CURLOPT_INFILESIZE_LARGE, length);
    set(CURLOPT_FTP_CREATE_MISSING_DIRS, static_cast<long>(CURLFTP_CREATE_DIR_RETRY));
    const std::string name = GetShortFileName(url_);
    // What stands there, if the server knows the command; it may refuse it.
    const CurlList size = commandList("*SIZE " + name);
    set(CURLOPT_PREQUOTE, size.get());
    // The server names no file that it did not keep. The rename that this begins never comes.
    const CURLcode code = performWithPostQuote("RNFR " + name);
    set(CURLOPT_PREQUOTE, static_cast<curl_slist*>(nullptr));
    return code;
}

// What has come to the server of a file would be taken for the whole one. What was there before the
// upload stays.
void tFtpConnection::dropHalf() {
    if (replyBeforeTransfer_ != kNoSuchFile) {
        return;
    }
    toleratedInWords(
        [this] {
            Init(url_, login_, password_);
            CheckCurlRes(sendFromParent("DELE " + GetShortFileName(url_)));
        },
        "unknown error", [](const std::string& reason) { LogError("Error: " + reason); });
}

std::size_t tFtpConnection::FileWrite(char* data, std::size_t size, std::size_t count,
                                      void* file) noexcept {
    return fwrite(data, size, count, static_cast<FILE*>(file)) * size;
}

std::size_t tFtpConnection::FileRead(char* data, std::size_t size, std::size_t count,
                                     void* file) noexcept {
    const std::size_t read = fread(data, size, count, static_cast<FILE*>(file));
    return ferror(static_cast<FILE*>(file)) != 0 ? CURL_READFUNC_ABORT : read * size;
}

}  // namespace zelvo
