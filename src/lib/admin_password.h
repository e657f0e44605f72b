// The panel administrator's password, with which the gate and the database are opened.
#pragma once

// Returns the first line of "/etc/qrd/.qrd.shadow" without its line feed, at most 4095 bytes of it,
// in a static buffer that the next call overwrites. A file that cannot be opened or read is
// reported and ends the process with code 1.
const char* get_admin_password();

// The same for the file at path.
const char* read_admin_password(const char* path);

inline constexpr const char* kAdminPasswordFile = "/etc/qrd/.qrd.shadow";

enum class PasswordReading { kDone, kNotOpened, kNotRead };

// Puts the first line of the file at path, without its line feed and cut to what fits, into the
// buffer of size bytes; an empty file is an empty password. Reports nothing: a failure leaves the
// buffer empty and its reason in errno.
PasswordReading readPasswordLine(const char* path, char* buffer, int size);
