// A panel utility: run by the panel's web server through the CLI gate, a local HTTP endpoint, or
// directly where the gate is missing. Which of the two is found out once for the whole run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

#include "exec/log_exec_cmd.h"

struct curl_slist;

namespace zelvo {

class CliGateResponse;

// Needs theDebugLog. Once the gate was found, a failure of the gate is a failure of the command and
// does not lead to direct execution.
class CliExec : public tLogExecCmd {
  public:
    // The gate answered with status 500, 400 or 403.
    static void InternalServerError(bool) {}
    static void BadRequest(bool) {}
    static void PermissionDenied(bool) {}
    // libcurl could not be set up.
    static void CurlError(bool) {}
    // The request did not get through, or what listens there is no gate.
    static void GateError(bool) {}

    // path: of a panel utility. The first construction in a process looks for the gate and logs
    // what it found; that there is none is no failure.
    explicit CliExec(const std::string& path);

    // Appends an argument; behind expectOptions() it counts as an option. This declaration hides
    // the form for literals that ExecCmd has, on purpose: that one knows nothing of options.
    CliExec& operator<<(const std::string& argument) override;

    // From here on arguments are options; a command that gets none of them is not run. To be called
    // behind the fixed head of an update command.
    void expectOptions() { expectOptions_ = true; }

    // Runs the command; does nothing at all, with 0 as result, when options were expected and none
    // came. Returns retCode. Raises Failed as in direct execution; through the gate also the errors
    // above and, for an answer that is none of its documents, those of getCliGateResponse.
    int exec() override;
    // The same. Returns 0, or retCode for a command that failed, or 255 for a failure of the gate,
    // which is logged. A failed run of a child ends the process.
    int exec(std::nothrow_t) noexcept override;

    // The text with its bytes percent-encoded (RFC 3986), and back up to the first zero byte.
    static std::string urlencode(const std::string& text);
    static std::string urldecode(const std::string& text);

    // False once the gate has been found missing.
    static bool use_gate;
    // The panel's user on whose behalf commands run that are constructed from now on.
    static std::optional<std::string> defaultCliUser;

  private:
    bool hasNothingToDo() const { return expectOptions_ && !hasOptions_; }

    static void detectGate();
    static void initConnection();
    static void useActualPassword();
    std::string prepareRequestString() const;
    static void makePostRequest(const std::string& body);
    static std::int32_t returnCode(const CliGateResponse& answer);
    void analyzeResponse();
    // libcurl's callbacks. noexcept, since a failure must not unwind through libcurl.
    // NOLINTNEXTLINE(bugprone-exception-escape)
    static std::size_t headerWriter(char* data, std::size_t size, std::size_t count,
                                    void* context) noexcept;
    static std::size_t responseWriter(char* data, std::size_t size, std::size_t count,
                                      void* context) noexcept;

    bool expectOptions_ = false;
    bool hasOptions_ = false;

    // True until the first command has been constructed.
    static bool first_run;
    // When the password file was changed that headers was built from.
    static std::time_t qrd_shadow_mtime;
    // The one connection of the process (libcurl's easy handle); it lives as long as the process.
    static void* easyhandle;
    // The one header of each request: the administrator's password.
    static curl_slist* headers;
    // libcurl's text of the last error.
    static char error_buffer[256];
    // The HTTP status and the body of the last response.
    static std::int32_t status;
    static std::string response;
};

}  // namespace zelvo

ERROR_DEFINITION(zelvo::CliExec::InternalServerError, "ExecCliGate::InternalServerError",
                 "Internal server error: %1%");
ERROR_DEFINITION(zelvo::CliExec::BadRequest, "ExecCliGate::BadRequest", "Bad Request: %1%");
ERROR_DEFINITION(zelvo::CliExec::PermissionDenied, "ExecCliGate::PermissionDenied",
                 "Permission denied: %1%");
ERROR_DEFINITION(zelvo::CliExec::CurlError, "ExecCliGate::CurlError", "Internal curl error: %1%");
ERROR_DEFINITION(zelvo::CliExec::GateError, "ExecCliGate::GateError",
                 "Error during CLI Gate interface usage: %1%");
