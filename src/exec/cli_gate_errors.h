// The errors of the panel's command line gate.
#pragma once

#include "commons/exception.h"

namespace zelvo {

// A base of what raises them to its callers, so that they carry that class's name there.
struct CliGateErrors {
    // The gate answered with status 500, 400 or 403.
    static void InternalServerError(bool) {}
    static void BadRequest(bool) {}
    static void PermissionDenied(bool) {}
    // libcurl could not be set up.
    static void CurlError(bool) {}
    // The request did not get through, or what listens there is no gate.
    static void GateError(bool) {}
};

}  // namespace zelvo

ERROR_DEFINITION(zelvo::CliGateErrors::InternalServerError, "ExecCliGate::InternalServerError",
                 "Internal server error: %1%");
ERROR_DEFINITION(zelvo::CliGateErrors::BadRequest, "ExecCliGate::BadRequest", "Bad Request: %1%");
ERROR_DEFINITION(zelvo::CliGateErrors::PermissionDenied, "ExecCliGate::PermissionDenied",
                 "Permission denied: %1%");
ERROR_DEFINITION(zelvo::CliGateErrors::CurlError, "ExecCliGate::CurlError",
                 "Internal curl error: %1%");
ERROR_DEFINITION(zelvo::CliGateErrors::GateError, "ExecCliGate::GateError",
                 "Error during CLI Gate interface usage: %1%");
