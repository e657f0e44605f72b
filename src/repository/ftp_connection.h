// One control connection to an FTP server (RFC 959), over libcurl.
#pragma once

#include <curl/curl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "commons/exception.h"
#include "exec/curl_handle.h"
#include "repository/curl_errors.h"
#include "repository/ftp_listing.h"
#include "repository/kept_connection.h"

namespace zelvo {

// Does one operation at a time, on the URL of the last Init. The connection itself is kept between
// operations. Raises CurlException for what libcurl reports and InvalidPath for a name that is
// none.
class tFtpConnection {
  public:
    static void InvalidPath(bool) {}
    static void FileOpenError(bool) {}

    // How long a server may say and take nothing in the midst of an operation, in seconds. Ten
    // minutes from the start: one that is that slow with a big file has most likely gone.
    static unsigned long s_silenceLimit;

    // passive: data connections are made by this side. timeout: of one operation, in seconds; 0 for
    // 600.
    tFtpConnection(bool passive, unsigned long timeout);
    tFtpConnection(const tFtpConnection&) = delete;
    tFtpConnection& operator=(const tFtpConnection&) = delete;

    // Sets libcurl up; to be called before the first connection of the process. Raises CurlError.
    static void Prepare();

    // Turns to a URL, which is plain text: nothing in it is encoded. login: empty for an anonymous
    // one. Raises CurlError as well.
    void Init(const std::string& url, const std::string& login, const std::string& password);

    // Appends what the directory holds, without "." and "..".
    void List(std::vector<std::string>& names);
    void ListEx(std::vector<FtpFileInfo>& entries);
    // False as well when the server cannot be asked.
    bool IsDirExist();
    // Raises what kept the last IsDirExist from the server's own answer.
    void checkAnswer() const;
    // One that is there already is no failure.
    void CreateDir();
    // Of an empty one.
    void DeleteDir();
    void DeleteFile_();

    // The file into a local one, which is cut, and back, with the directories above it that are
    // missing. A download that fails leaves no local file, and an upload no file that was not there
    // before. Raise FileOpenError as well.
    void DownloadFile(const std::string& localFile);
    void UploadFile(const std::string& localFile);

    // Logs and raises what is not CURLE_OK.
    static void CheckCurlRes(CURLcode code);
    // The name behind the last "/", for a command. The first takes any path. Raise InvalidPath for
    // "", ".", ".." and what holds a control character.
    static std::string GetFileName(const std::string& path);
    static std::string GetShortFileName(const std::string& path) { return GetFileName(path); }

  private:
    template <class Value>
    void set(CURLoption option, Value value) {
        CheckCurlRes(curl_easy_setopt(curl_.get(), option, value));
    }
    void setLimits();
    void setDataConnection();
    void setVerbose();
    // target: the URL to go to, without login.
    void InitCredentials(const std::string& target);
    // Runs what the handle is set to. Returns CURLE_OPERATION_TIMEDOUT for a silent server too.
    // Raises what KeptConnection::perform raises.
    CURLcode perform();
    // isStale: whether the operation met a connection of an earlier one that had been ended, and
    // came to nothing.
    CURLcode performOnce(bool& isStale);
    bool wasEnded(CURLcode code) const;
    // As the server named it when the connection was made.
    bool knowsLoginDirectory() const;
    std::string directoryUrl() const;
    void fetchListing(long namesOnly, std::string& text);
    CURLcode requestListing(long namesOnly, std::string& text);
    // Whether the server lets a directory in and refuses to list it.
    bool isRefusedListing(CURLcode code) const;
    bool isListedEmpty();
    CURLcode enter(const std::string& target);
    // Goes to the directory above and sends a command there.
    CURLcode sendFromParent(const std::string& command);
    static CurlList commandList(const std::string& command);
    CURLcode performWithPostQuote(const std::string& command);
    CURLcode download(const std::string& localFile);
    CURLcode upload(FILE* file, curl_off_t length);
    void dropHalf();

    // libcurl's callbacks. noexcept, since a failure must not unwind through libcurl.
    static std::size_t ListingRead(char* data, std::size_t size, std::size_t count,
                                   void* text) noexcept;
    static std::size_t IsExistRead(char* data, std::size_t size, std::size_t count,
                                   void* nothing) noexcept;
    static std::size_t FileWrite(char* data, std::size_t size, std::size_t count,
                                 void* file) noexcept;
    static std::size_t FileRead(char* data, std::size_t size, std::size_t count,
                                void* file) noexcept;
    static int VerboseTell(CURL* handle, curl_infotype type, char* data, std::size_t size,
                           void* connection) noexcept;

    bool passive_;
    unsigned long timeout_;
    std::string url_;
    // url_ as libcurl takes it.
    std::string encodedUrl_;
    std::string login_;
    std::string password_;
    // As of GetAuthStr.
    std::string userPassword_;
    bool hasAuthInUrl_ = false;
    // Of the last operation, as OperationWatch tells it.
    int replyBeforeTransfer_ = 0;
    // Of the last IsDirExist; CURLE_OK if the server said yes or no.
    CURLcode unanswered_ = CURLE_OK;
    KeptConnection kept_;
    // Dies before the connection, which knows no more of it.
    CurlHandle curl_;
};

}  // namespace zelvo

ERROR_DEFINITION(zelvo::tFtpConnection::InvalidPath, "tFtpConnection::InvalidPath",
                 "Invalid path: %1%");
ERROR_DEFINITION(zelvo::tFtpConnection::FileOpenError, "tFtpConnection::FileOpenError",
                 "Unable to open file %1%");
