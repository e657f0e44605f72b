#include "repository/ftp_connection.h"

#include <algorithm>

#include "report/debug_log.h"
#include "repository/ftp_url.h"
#include "repository/ftp_verbose.h"
#include "repository/operation_watch.h"
#include "repository/path_guard.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

constexpr unsigned long kDefaultTimeout = 600;
// How long a server may take to make a data connection, in milliseconds; libcurl's own time.
constexpr long kMaxAcceptTime = 60000;
// How long a server may take to be reached and to let the login in, in seconds.
constexpr unsigned long kMaxConnectTime = 120;

// What libcurl moves at once, in bytes: its own 16 KB make a transfer of 1 GB
// a sixth slower than curl's.
constexpr long kBlock = 256L * 1024;
// How long a connection may have been idle to be used again, in seconds.
constexpr long kMaxIdleTime = 60;
// "Service not available, closing control connection" (RFC 959, 4.2).
constexpr long kServiceEnds = 421;

const std::string kLineBreaks("\r\n\0", 3);

}  // namespace

unsigned long tFtpConnection::s_silenceLimit = 600;

tFtpConnection::tFtpConnection(bool passive, unsigned long timeout)
    : passive_(passive), timeout_(timeout == 0 ? kDefaultTimeout : timeout) {}

void tFtpConnection::Prepare() {
    static const CURLcode code = curl_global_init(CURL_GLOBAL_ALL);
    if (code != CURLE_OK) {
        throw EXC(CurlError) % get_curl_error_msg(code);
    }
}

void tFtpConnection::Init(const std::string& url, const std::string& login,
                          const std::string& password) {
    LogMsg("Ftp init url " + urlWithoutLogin(url));
    url_ = url;
    encodedUrl_ = encodeFtpUrl(url);
    if ((login + password).find_first_of(kLineBreaks) != std::string::npos) {
        throw EXC(CurlError) % "a line break in the login or the password";
    }
    login_ = login;
    password_ = password;
    if (curl_ == nullptr) {
        curl_.reset(curl_easy_init());
    } else {
        curl_easy_reset(curl_.get());
    }
    if (curl_ == nullptr) {
        throw EXC(CurlError) % "unable to init curl";
    }
    setLimits();
    GetAuthStr(login, password, userPassword_, hasAuthInUrl_);
    setDataConnection();
    setVerbose();
}

void tFtpConnection::setLimits() {
    set(CURLOPT_TIMEOUT, static_cast<long>(timeout_));
    set(CURLOPT_FTP_RESPONSE_TIMEOUT, static_cast<long>(timeout_));
    set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(std::min(timeout_, kMaxConnectTime)));
    // Before half of the time is over: libcurl would tell the end of all time and not what did not
    // come.
    const auto quarter = static_cast<long>(timeout_) * 1000 / 4;
    set(CURLOPT_ACCEPTTIMEOUT_MS, std::min(quarter, kMaxAcceptTime));
    set(CURLOPT_BUFFERSIZE, kBlock);
    set(CURLOPT_UPLOAD_BUFFERSIZE, kBlock);
    // A firewall forgets a connection on which nothing comes and goes, such as that for commands
    // while a file is transferred.
    set(CURLOPT_TCP_KEEPALIVE, 1L);
    set(CURLOPT_MAXAGE_CONN, kMaxIdleTime);
    // libcurl would take a proxy from the environment and another protocol from the URL.
    set(CURLOPT_PROXY, "");
    set(CURLOPT_PROTOCOLS_STR, "ftp");
}

void tFtpConnection::setDataConnection() {
    if (passive_) {
        set(CURLOPT_FTP_USE_EPSV, 0L);
        // A server could send the data connection, and with it the backup, to any other host.
        set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
    } else {
        set(CURLOPT_FTPPORT, "-");
        set(CURLOPT_FTP_USE_EPRT, 0L);
    }
}

void tFtpConnection::setVerbose() {
    if (theDebugLog != nullptr && theDebugLog->isDebugMode()) {
        set(CURLOPT_VERBOSE, 1L);
        set(CURLOPT_DEBUGFUNCTION, &tFtpConnection::VerboseTell);
        set(CURLOPT_DEBUGDATA, this);
    }
}

void tFtpConnection::InitCredentials(const std::string& target) {
    set(CURLOPT_URL, (hasAuthInUrl_ ? GetUrlWithAuth(target, userPassword_) : target).c_str());
    if (!hasAuthInUrl_ && !login_.empty()) {
        set(CURLOPT_USERPWD, userPassword_.c_str());
    }
}

// A server ends a connection that was idle for too long, and tells it with the answer to what comes
// next, or not at all.
CURLcode tFtpConnection::perform() {
    if (!knowsLoginDirectory()) {
        kept_.drop();
    }
    bool isStale = false;
    const CURLcode code = performOnce(isStale);
    if (!isStale) {
        return code;
    }
    kept_.drop();
    return performOnce(isStale);
}

// Where it is unknown, libcurl goes on from the directory of the operation before.
bool tFtpConnection::knowsLoginDirectory() const {
    const char* directory = nullptr;
    return curl_easy_getinfo(curl_.get(), CURLINFO_FTP_ENTRY_PATH, &directory) == CURLE_OK &&
           directory != nullptr;
}

CURLcode tFtpConnection::performOnce(bool& isStale) {
    const OperationWatch watch(curl_.get(), s_silenceLimit);
    CURLcode code = CURLE_OK;
    try {
        code = kept_.perform(curl_.get());
    } catch (...) {
        replyBeforeTransfer_ = watch.replyBeforeTransfer();
        throw;
    }
    replyBeforeTransfer_ = watch.replyBeforeTransfer();
    isStale = !watch.hasAnswer() && wasEnded(code);
    return watch.isOver() ? CURLE_OPERATION_TIMEDOUT : code;
}

bool tFtpConnection::wasEnded(CURLcode code) const {
    long connections = 1;
    long reply = 0;
    curl_easy_getinfo(curl_.get(), CURLINFO_NUM_CONNECTS, &connections);
    curl_easy_getinfo(curl_.get(), CURLINFO_RESPONSE_CODE, &reply);
    return connections == 0 &&
           (code == CURLE_SEND_ERROR || code == CURLE_RECV_ERROR || code == CURLE_GOT_NOTHING ||
            (code == CURLE_OPERATION_TIMEDOUT && reply == kServiceEnds));
}

std::string tFtpConnection::directoryUrl() const {
    return encodedUrl_.ends_with('/') ? encodedUrl_ : encodedUrl_ + "/";
}

void tFtpConnection::CheckCurlRes(CURLcode code) {
    if (code == CURLE_OK) {
        return;
    }
    tellCurlError(code);
    throw CurlException(EXC(CurlError) % get_curl_error_msg(code), code);
}

std::string tFtpConnection::GetFileName(const std::string& path) {
    std::string name = fileNameOf(path);
    if (!isEntryName(name)) {
        throw EXC(InvalidPath) % urlWithoutLogin(path);
    }
    return name;
}

// NOLINTNEXTLINE(readability-non-const-parameter)
int tFtpConnection::VerboseTell(CURL* /*handle*/, curl_infotype type, char* data, std::size_t size,
                                void* connection) noexcept {
    const auto& self = *static_cast<tFtpConnection*>(connection);
    if (type == CURLINFO_TEXT || type == CURLINFO_HEADER_IN || type == CURLINFO_HEADER_OUT) {
        LogMsg(maskPassword(std::string(data, size), self.password_));
    }
    return 0;
}

}  // namespace zelvo
