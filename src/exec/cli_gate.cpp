#include "exec/cli_gate.h"

#include <curl/curl.h>
#include <sys/stat.h>

#include <boost/numeric/conversion/cast.hpp>
#include <boost/regex.hpp>
#include <charconv>
#include <cstring>
#include <utility>

#include "commons/scoped_variable.h"
#include "exec/cli_gate_errors.h"
#include "exec/cli_gate_request.h"
#include "exec/exec_cmd.h"
#include "exec/url_encoding.h"
#include "lib/admin_password.h"
#include "lib/liblog.h"
#include "report/debug_log.h"
#include "xml/tool_answers.h"

namespace zelvo {

namespace {

constexpr const char* kGateUrl = "http://127.0.0.1:8880/cligate.php";
constexpr const char* kNoPassword = "Can not obtain admin's password to access CLI Gate";

// libcurl would follow http_proxy even to the loopback address, and hand the administrator's
// password to whatever listens there.
CURLcode performRequest(CURL* handle) {
    const ScopedVariable direct("no_proxy", "*");
    return curl_easy_perform(handle);
}

// The code that the utility returned. An answer without a number is a failure of the gate, and so
// of this one command.
std::int32_t returnCode(const CliGateResponse& answer) {
    try {
        return boost::numeric_cast<std::int32_t>(answer.getReturn());
    } catch (const std::bad_cast&) {
        throw EXC(CliGateErrors::GateError) % "The return code in the answer is not a number";
    }
}

}  // namespace

void CliGate::initConnection() {
    static_assert(sizeof(error_buffer) >= CURL_ERROR_SIZE);
    easyhandle.reset(curl_easy_init());
    CURL* const handle = easyhandle.get();
    if (handle == nullptr) {
        throw EXC(CliGateErrors::CurlError) % "CURL can not be initialized";
    }
    if (curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, error_buffer) != CURLE_OK ||
        curl_easy_setopt(handle, CURLOPT_URL, kGateUrl) != CURLE_OK) {
        throw EXC(CliGateErrors::CurlError) % error_buffer;
    }
    useActualPassword();
    if (curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &CliGate::responseWriter) != CURLE_OK ||
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, this) != CURLE_OK ||
        curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &CliGate::headerWriter) != CURLE_OK ||
        curl_easy_setopt(handle, CURLOPT_HEADERDATA, this) != CURLE_OK) {
        throw EXC(CliGateErrors::CurlError) % error_buffer;
    }
    if (performRequest(handle) != CURLE_OK) {
        throw EXC(CliGateErrors::GateError) % error_buffer;
    }
    // A working gate finds a request without arguments bad.
    if (status != 400) {
        theDebugLog->log("Cli gate is not available: status(" + std::to_string(status) +
                         ") HTTP response: " + response);
        throw EXC(CliGateErrors::GateError) % "Unexpected response from CLI gate";
    }
}

// The time of the file is asked for before each request, so that a password that is changed in a
// long run reaches the next one.
void CliGate::useActualPassword() {
    struct stat info {};
    if (stat(kAdminPasswordFile, &info) != 0) {
        messlog2(0, 0, "%s", kNoPassword);
        throw EXC(CliGateErrors::GateError) % kNoPassword;
    }
    if (info.st_mtime == qrd_shadow_mtime) {
        return;
    }
    CurlList renewed(curl_slist_append(
        nullptr, (std::string("HTTP_AUTH_PASSWD: ") + get_admin_password()).c_str()));
    if (renewed == nullptr ||
        curl_easy_setopt(easyhandle.get(), CURLOPT_HTTPHEADER, renewed.get()) != CURLE_OK) {
        throw EXC(CliGateErrors::CurlError) % error_buffer;
    }
    // The handle no longer points to the old list.
    headers = std::move(renewed);
    qrd_shadow_mtime = info.st_mtime;
}

void CliGate::makePostRequest(const std::string& body) {
    status = 0;
    response.clear();
    theDebugLog->log("Request string: " + urldecode(body));
    if (curl_easy_setopt(easyhandle.get(), CURLOPT_POSTFIELDS, body.c_str()) != CURLE_OK) {
        throw EXC(CliGateErrors::CurlError) % error_buffer;
    }
    useActualPassword();
    if (performRequest(easyhandle.get()) != CURLE_OK) {
        throw EXC(CliGateErrors::GateError) % error_buffer;
    }
}

void CliGate::analyzeResponse(ExecCmd& command) const {
    theDebugLog->log("HTTP response: " + response);
    if (status == 500) {
        theDebugLog->log("Internal server error detected: " + response);
        throw EXC(CliGateErrors::InternalServerError) % response;
    }
    const auto answer = getCliGateResponse(response);
    command.finished = answer->isOk();
    if (command.finished) {
        command.stdout = answer->getStdout();
        command.stderr = answer->getStderr();
        command.retCode = returnCode(*answer);
    } else {
        command.stderr = answer->getError();
    }
    if (status == 400) {
        throw EXC(CliGateErrors::BadRequest) % command.stderr;
    }
    if (status == 403) {
        throw EXC(CliGateErrors::PermissionDenied) % command.stderr;
    }
    if (status == 200 && command.retCode != 0) {
        command.reportError();
    }
}

// NOLINTNEXTLINE(readability-non-const-parameter)
std::size_t CliGate::headerWriter(char* data, std::size_t size, std::size_t count,
                                  void* gate) noexcept {
    static const boost::regex statusLine("^HTTP/1\\.1\\s+(\\d+)\\s+.*");
    std::int32_t& status = static_cast<CliGate*>(gate)->status;
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
std::size_t CliGate::responseWriter(char* data, std::size_t size, std::size_t count,
                                    void* gate) noexcept {
    static_cast<CliGate*>(gate)->response.append(data, strnlen(data, size * count));
    return size * count;
}

}  // namespace zelvo
