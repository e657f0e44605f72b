// The commands of a connection and its listings.
#include <algorithm>
#include <new>

#include "repository/ftp_connection.h"
#include "repository/ftp_url.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

// Of a listing, in bytes: a server must not fill the memory.
constexpr std::size_t kMaxListing = std::size_t{64} << 20;
// "Requested action not taken" (RFC 959, 4.2).
constexpr long kNoFile = 550;

}  // namespace

void tFtpConnection::List(std::vector<std::string>& names) {
    LogMsg("Ftp list dir");
    std::string text;
    fetchListing(1, text);
    splitFileNames(text, names);
    LogMsg("End ftp list dir");
}

void tFtpConnection::ListEx(std::vector<FtpFileInfo>& entries) {
    LogMsg("Ftp extended list dir");
    std::string text;
    fetchListing(0, text);
    SplitFileInfo(text, entries);
}

void tFtpConnection::fetchListing(long namesOnly, std::string& text) {
    const CURLcode code = requestListing(namesOnly, text);
    if (!isRefusedListing(code) || namesOnly == 0 || !isListedEmpty()) {
        CheckCurlRes(code);
    }
}

CURLcode tFtpConnection::requestListing(long namesOnly, std::string& text) {
    InitCredentials(directoryUrl());
    set(CURLOPT_FTPLISTONLY, namesOnly);
    set(CURLOPT_WRITEFUNCTION, &tFtpConnection::ListingRead);
    set(CURLOPT_WRITEDATA, &text);
    return perform();
}

// Some servers answer so for a directory without names, others for one that may not be read. The
// long listing tells which it is.
bool tFtpConnection::isListedEmpty() {
    std::string text;
    return requestListing(0, text) == CURLE_OK && isEmptyListing(text);
}

bool tFtpConnection::isRefusedListing(CURLcode code) const {
    long reply = 0;
    curl_easy_getinfo(curl_.get(), CURLINFO_RESPONSE_CODE, &reply);
    return code == CURLE_FTP_COULDNT_RETR_FILE && reply == kNoFile;
}

// libcurl counts on being where it went last, so the way back to the root comes first: what it
// finds is what the server has now, and no command of ours leads it elsewhere.
bool tFtpConnection::IsDirExist() {
    LogMsg("Ftp check dir exist");
    set(CURLOPT_FTPLISTONLY, 1L);
    set(CURLOPT_WRITEFUNCTION, &tFtpConnection::IsExistRead);
    set(CURLOPT_NOBODY, 1L);
    // CWD with the whole path and not one for each directory.
    set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_SINGLECWD));
    unanswered_ = enter(rootUrl(encodedUrl_));
    if (unanswered_ != CURLE_OK) {
        return false;
    }
    const CURLcode code = enter(directoryUrl());
    unanswered_ = code == CURLE_REMOTE_ACCESS_DENIED ? CURLE_OK : code;
    return code == CURLE_OK;
}

void tFtpConnection::checkAnswer() const { CheckCurlRes(unanswered_); }

CURLcode tFtpConnection::enter(const std::string& target) {
    InitCredentials(target);
    return perform();
}

void tFtpConnection::CreateDir() {
    LogMsg("Ftp create dir");
    const CURLcode code = sendFromParent("MKD " + GetShortFileName(url_));
    if (code != CURLE_QUOTE_ERROR || !IsDirExist()) {
        CheckCurlRes(code);
    }
}

void tFtpConnection::DeleteDir() {
    LogMsg("Ftp delete dir");
    CheckCurlRes(sendFromParent("RMD " + GetShortFileName(url_)));
}

void tFtpConnection::DeleteFile_() {
    LogMsg("Ftp delete file");
    set(CURLOPT_FTPLISTONLY, 1L);
    CheckCurlRes(sendFromParent("DELE " + GetShortFileName(url_)));
}

CURLcode tFtpConnection::sendFromParent(const std::string& command) {
    InitCredentials(parentUrl(encodedUrl_));
    set(CURLOPT_NOBODY, 1L);
    return performWithPostQuote(command);
}

CurlList tFtpConnection::commandList(const std::string& command) {
    CurlList commands(curl_slist_append(nullptr, command.c_str()));
    if (commands == nullptr) {
        throw std::bad_alloc();
    }
    return commands;
}

CURLcode tFtpConnection::performWithPostQuote(const std::string& command) {
    const CurlList commands = commandList(command);
    set(CURLOPT_POSTQUOTE, commands.get());
    const CURLcode code = perform();
    set(CURLOPT_POSTQUOTE, static_cast<curl_slist*>(nullptr));
    return code;
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t tFtpConnection::ListingRead(char* data, std::size_t size, std::size_t count,
                                        void* text) noexcept {
    auto& listing = *static_cast<std::string*>(text);
    if (listing.size() + size * count > kMaxListing) {
        return 0;
    }
    listing.append(data, size * count);
    return size * count;
}

std::size_t tFtpConnection::IsExistRead(char* /*data*/, std::size_t size, std::size_t count,
                                        void* /*nothing*/) noexcept {
    return size * count;
}

}  // namespace zelvo
