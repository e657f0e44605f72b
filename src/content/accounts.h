// The panel's system accounts that own content.
#pragma once

namespace zelvo::accounts {

inline constexpr const char* kRoot = "root";
// The group with id 0, which is not called "root" everywhere.
inline constexpr const char* kRootGroup = "0";
// User and group that own mail.
inline constexpr const char* kMail = "popuser";
// User and group of the panel itself.
inline constexpr const char* kPanel = "qrdadm";
// User and group of the mail list manager.
inline constexpr const char* kMailList = "list";
// Group of the hosting customers.
inline constexpr const char* kCustomers = "qrdcln";
// Group that the web server runs in.
inline constexpr const char* kWebServer = "qrdserv";
// Group of anonymous FTP uploads.
inline constexpr const char* kFtpUploads = "qrdftp";

}  // namespace zelvo::accounts
