// The gate's side of CliExec: the connection, the request and the answer.
#include <curl/curl.h>
#include <sys/stat.h>

#include <boost/numeric/conversion/cast.hpp>
#include <boost/regex.hpp>
#include <charconv>
#include <cstring>
#include <memory>
#include <new>

#include "commons/scoped_variable.h"
#include "exec/cli_exec.h"
#include "lib/admin_password.h"
#include "lib/liblog.h"
#include "report/debug_log.h"
#include "xml/tool_answers.h"

namespace zelvo {

namespace {

constexpr const char* kGateUrl = "http://127.0.0.1:8880/cligate.php";
constexpr const char* kPasswordFile = "/etc/qrd/.qrd.shadow";
constexpr const char* kNoPassword = "Can not obtain admin's password to access CLI Gate";

// Takes over a text that libcurl made.
std::string takeCurlText(char* text) {
    const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
    if (owner == nullptr) {
        throw std::bad_alloc();
    }
    return owner.get();
}

// libcurl would follow http_proxy even to the loopback address, and hand the administrator's
// password to whatever listens there.
CURLcode performRequest(CURL* handle) {
    const ScopedVariable direct("no_proxy", "*");
    return curl_easy_perform(handle);
}

// "client" for "/usr/local/panel/client.php".
std::string utilityName(const std::string& path) {
    const std::string file = path.substr(path.rfind('/') + 1);
    return file.substr(0, file.rfind('.'));
}

}  // namespace

std::time_t CliExec::qrd_shadow_mtime = 0;
void* CliExec::easyhandle = nullptr;
curl_slist* CliExec::headers = nullptr;
char CliExec::error_buffer[CURL_ERROR_SIZE] = "";
std::int32_t CliExec::status = 0;
std::string CliExec::response;

std::string CliExec::urlencode(const std::string& text) {
    return takeCurlText(curl_escape(text.data(), static_cast<int>(text.size())));
}

std::string CliExec::urldecode(const std::string& text) {
    return takeCurlText(curl_unescape(text.data(), static_cast<int>(text.size())));
}

void CliExec::initConnection() {
    easyhandle = curl_easy_init();
    if (easyhandle == nullptr) {
        throw EXC(CliExec::CurlError) % "CURL can not be initialized";
    }
    if (curl_easy_setopt(easyhandle, CURLOPT_ERRORBUFFER, error_buffer) != CURLE_OK ||
        curl_easy_setopt(easyhandle, CURLOPT_URL, kGateUrl) != CURLE_OK) {
        throw EXC(CliExec::CurlError) % error_buffer;
    }
    useActualPassword();
    if (curl_easy_setopt(easyhandle, CURLOPT_WRITEFUNCTION, &CliExec::responseWriter) != CURLE_OK ||
        curl_easy_setopt(easyhandle, CURLOPT_HEADERFUNCTION, &CliExec::headerWriter) != CURLE_OK) {
        throw EXC(CliExec::CurlError) % error_buffer;
    }
    if (performRequest(easyhandle) != CURLE_OK) {
        throw EXC(CliExec::GateError) % error_buffer;
    }
    // A working gate finds a request without arguments bad.
    if (status != 400) {
        theDebugLog->log("Cli gate is not available: status(" + std::to_string(status) +
                         ") HTTP response: " + response);
        throw EXC(CliExec::GateError) % "Unexpected response from CLI gate";
    }
}

// The time of the file is asked for before each request, so that a password that is changed in a
// long run reaches the next one.
void CliExec::useActualPassword() {
    struct stat info {};
    if (stat(kPasswordFile, &info) != 0) {
        messlog2(0, 0, "%s", kNoPassword);
        throw EXC(CliExec::GateError) % kNoPassword;
    }
    if (info.st_mtime == qrd_shadow_mtime) {
        return;
    }
    curl_slist* const renewed = curl_slist_append(
        nullptr, (std::string("HTTP_AUTH_PASSWD: ") + get_admin_password()).c_str());
    if (renewed == nullptr ||
        curl_easy_setopt(easyhandle, CURLOPT_HTTPHEADER, renewed) != CURLE_OK) {
        curl_slist_free_all(renewed);
        throw EXC(CliExec::CurlError) % error_buffer;
    }
    // The handle no longer points to the old list.
    curl_slist_free_all(headers);
    headers = renewed;
    qrd_shadow_mtime = info.st_mtime;
}

std::string CliExec::prepareRequestString() const {
    std::string body = "ARG[0]=" + urlencode(utilityName(args[0])) + "&";
    std::string line = args[0];
    for (std::size_t i = 1; args[i] != nullptr; ++i) {
        body.append("ARG[").append(std::to_string(i)).append("]=");
        body.append(urlencode(args[i])).append("&");
        line.append(" '").append(args[i]).append("'");
    }
    for (const auto& [name, value] : env) {
        body.append("ENV[").append(urlencode(name)).append("]=");
        body.append(urlencode(value)).append("&");
        line.insert(0, " ").insert(0, value).insert(0, "=").insert(0, name);
    }
    body += "STDIN=" + urlencode(stdin);
    if (!stdin.empty()) {
        line.insert(0, "echo '" + stdin + "' | ");
    }
    theDebugLog->log("Request is ready for: " + line);
    return body;
}

void CliExec::makePostRequest(const std::string& body) {
    status = 0;
    response.clear();
    theDebugLog->log("Request string: " + urldecode(body));
    if (curl_easy_setopt(easyhandle, CURLOPT_POSTFIELDS, body.c_str()) != CURLE_OK) {
        throw EXC(CliExec::CurlError) % error_buffer;
    }
    useActualPassword();
    if (performRequest(easyhandle) != CURLE_OK) {
        throw EXC(CliExec::GateError) % error_buffer;
    }
}

// The code that the utility returned. An answer without a number is a failure of the gate, and so
// of this one command.
std::int32_t CliExec::returnCode(const CliGateResponse& answer) {
    try {
        return boost::numeric_cast<std::int32_t>(answer.getReturn());
    } catch (const std::bad_cast&) {
        throw EXC(CliExec::GateError) % "The return code in the answer is not a number";
    }
}

void CliExec::analyzeResponse() {
    theDebugLog->log("HTTP response: " + response);
    if (status == 500) {
        theDebugLog->log("Internal server error detected: " + response);
        throw EXC(CliExec::InternalServerError) % response;
    }
    const auto answer = getCliGateResponse(response);
    if (answer->isOk()) {
        finished = true;
        stdout = answer->getStdout();
        stderr = answer->getStderr();
        retCode = returnCode(*answer);
    } else {
        finished = false;
        stderr = answer->getError();
    }
    if (status == 400) {
        throw EXC(CliExec::BadRequest) % stderr;
    }
    if (status == 403) {
        throw EXC(CliExec::PermissionDenied) % stderr;
    }
    if (status == 200 && retCode != 0) {
        reportError();
    }
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t CliExec::headerWriter(char* data, std::size_t size, std::size_t count,
                                  void* /*context*/) noexcept {
    static const boost::regex statusLine("^HTTP/1\\.1\\s+(\\d+)\\s+.*");
    const char* const line = data;
    boost::cmatch match;
    if (boost::regex_match(line, line + size * count, match, statusLine)) {
        // A number that is too large leaves the status as it was: none of those that count.
        std::from_chars(match[1].first, match[1].second, status);
        theDebugLog->log("HTTP status code is: " +
                         std::to_string(status));  // NOLINT(bugprone-exception-escape)
    }
    return size * count;
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t CliExec::responseWriter(char* data, std::size_t size, std::size_t count,
                                    void* /*context*/) noexcept {
    response.append(data, strnlen(data, size * count));
    return size * count;
}

}  // namespace zelvo
