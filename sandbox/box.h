// The private namespace in which a panel seems to be installed.
#pragma once

#include <string>

namespace sandbox {

struct BoxOptions {
    std::string state;          // absolute path of the state directory, which exists
    std::string utilities;      // directory of the built stand-ins
    bool configuration = true;  // with /etc/qrd/qrd.conf
    bool clients = false;       // with stand-ins for the clients of database servers in it
};

// Takes this process into a mount and a network namespace of its own and makes the panel there:
// /etc and /opt (and /usr/local, when there is no configuration to say where the product is) become
// private views of the machine's own, and the loopback address works. What is written below the
// state directory once is kept and not written again. Throws std::runtime_error; then the namespace
// is half made and must not be used.
void enterBox(const BoxOptions& options);

// Removes a state directory, seen from outside. Refuses when something is still mounted in it here.
void removeState(const std::string& state);

}  // namespace sandbox
