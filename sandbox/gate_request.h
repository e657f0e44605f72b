// A request to the gate: a form that names a utility, its arguments, its environment and its
// standard input.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox {

struct GateRequest {
    std::vector<std::string> arguments;  // the first one is the utility
    std::map<std::string, std::string> environment;
    std::string input;
};

// Reads ARG[n]=, ENV[name]= and STDIN= of an urlencoded form; other fields are passed over. Throws
// std::runtime_error when a number is missing among the arguments or given twice.
GateRequest parseGateRequest(std::string_view form);

struct GateResult {
    int status = 0;  // -1 for a utility that a signal ended
    std::string out;
    std::string err;
};

// Runs the utility with the environment of the request and nothing else but PATH. Throws
// std::runtime_error when there is no such utility.
GateResult runGateRequest(const GateRequest& request);

}  // namespace sandbox
