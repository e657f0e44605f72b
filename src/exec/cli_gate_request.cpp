#include "exec/cli_gate_request.h"

#include "exec/exec_cmd.h"
#include "exec/url_encoding.h"
#include "report/debug_log.h"

namespace zelvo {

namespace {

// "client" for "/usr/local/panel/client.php".
std::string utilityName(const std::string& path) {
    const std::string file = path.substr(path.rfind('/') + 1);
    return file.substr(0, file.rfind('.'));
}

}  // namespace

std::string prepareRequestString(const ExecCmd& command) {
    const ArgList& args = command.args;
    std::string body = "ARG[0]=" + urlencode(utilityName(args[0])) + "&";
    std::string line = args[0];
    for (std::size_t i = 1; args[i] != nullptr; ++i) {
        body.append("ARG[").append(std::to_string(i)).append("]=");
        body.append(urlencode(args[i])).append("&");
        line.append(" '").append(args[i]).append("'");
    }
    for (const auto& [name, value] : command.env) {
        body.append("ENV[").append(urlencode(name)).append("]=");
        body.append(urlencode(value)).append("&");
        line.insert(0, " ").insert(0, value).insert(0, "=").insert(0, name);
    }
    body += "STDIN=" + urlencode(command.stdin);
    if (!command.stdin.empty()) {
        line.insert(0, "echo '" + command.stdin + "' | ");
    }
    theDebugLog->log("Request is ready for: " + line);
    return body;
}

}  // namespace zelvo
