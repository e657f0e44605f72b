// The panel administrator's password, with which the gate is opened.
#pragma once

// Returns the first line of "/etc/qrd/.qrd.shadow" without its line feed, at most 4095 bytes of it,
// in a static buffer that the next call overwrites. A file that cannot be opened or read is
// reported and ends the process with code 1.
const char* get_admin_password();

// The same for the file at path.
const char* read_admin_password(const char* path);
