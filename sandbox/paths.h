// Where things stand inside the sandbox. The places are fixed, because neither the restore nor the
// gate passes anything on that could name them.
#pragma once

namespace sandbox {

inline constexpr char kProductRoot[] = "/opt/qrd";
inline constexpr char kStateDir[] = "/opt/qrd/var/sandbox";
inline constexpr char kUtilityDir[] = "/opt/qrd/admin/vlib/api-cli";
inline constexpr char kConfigurationFile[] = "/etc/qrd/qrd.conf";
inline constexpr char kPasswordFile[] = "/etc/qrd/.qrd.shadow";

// Files of the state directory.
inline constexpr char kJournalFile[] = "journal";
inline constexpr char kCallsFile[] = "calls";
inline constexpr char kModelFile[] = "model.db";
inline constexpr char kFaultsFile[] = "faults";
inline constexpr char kGateFaultsFile[] = "gate-faults";
inline constexpr char kGateLogFile[] = "gate.log";
inline constexpr char kNoModelFile[] = "no-model";
inline constexpr char kAcceptUnknownFile[] = "accept-unknown";
inline constexpr char kShellsFile[] = "shells";
inline constexpr char kCommandPidFile[] = "signal-pid";

}  // namespace sandbox
