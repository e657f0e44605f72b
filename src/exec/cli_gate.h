// The client of the panel's command line gate, a local HTTP endpoint where the panel's own web
// server runs a utility in its own environment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>

#include "exec/curl_handle.h"

namespace zelvo {

class ExecCmd;

// One connection to the gate and what came over it last. Needs theDebugLog. Its functions raise
// CliGateErrors: CurlError when libcurl refuses a setting, GateError when a request does not get
// through or the administrator's password cannot be sent with it.
class CliGate {
  public:
    CliGate() = default;
    CliGate(const CliGate&) = delete;
    CliGate& operator=(const CliGate&) = delete;

    // Makes the connection, once, and tries whether a gate is at its other end. Raises GateError
    // when something else is, or nothing.
    void initConnection();

    // Sends a request, for which the connection must have been made, and keeps the answer.
    void makePostRequest(const std::string& body);

    // Reads the kept answer into the results of the command that was asked for. Raises
    // ExecCmd::Failed for a command that failed, InternalServerError, BadRequest or
    // PermissionDenied by the status, GateError for a return code that is no number and, for an
    // answer that is none of the gate's documents, what getCliGateResponse raises.
    void analyzeResponse(ExecCmd& command) const;

  private:
    void useActualPassword();

    // libcurl's callbacks; gate is the CliGate. noexcept, since a failure must not unwind through
    // libcurl.
    // NOLINTNEXTLINE(bugprone-exception-escape)
    static std::size_t headerWriter(char* data, std::size_t size, std::size_t count,
                                    void* gate) noexcept;
    static std::size_t responseWriter(char* data, std::size_t size, std::size_t count,
                                      void* gate) noexcept;

    // When the password file was changed that headers was built from.
    std::time_t qrd_shadow_mtime = 0;
    // The one header of each request: the administrator's password.
    CurlList headers;
    // libcurl's text of the last error.
    char error_buffer[256] = "";
    // The connection, which libcurl keeps open between requests.
    CurlHandle easyhandle;
    // The HTTP status and the body of the last response.
    std::int32_t status = 0;
    std::string response;
};

}  // namespace zelvo
