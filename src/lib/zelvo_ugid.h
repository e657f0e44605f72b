// Users and groups of the system, by name and by number.
#pragma once

#include <pwd.h>
#include <sys/types.h>

// Returns the id of a user. An unknown name, or a failed look-up, is reported and ends the process
// with code 1.
uid_t get_user_id(const char* name);

// Returns the record of a user in the C library's static storage, which the next look-up
// overwrites. An unknown name is reported and ends the process with code 1.
const passwd* zelvo_getpw(const char* name);

// Gives the id of a user and of the user's primary group; either pointer may be null. Returns 0, or
// -1 with errno set (ENOENT for an unknown name) and nothing reported, so that a caller that holds
// something half done can put it right.
int zelvo_ugid(const char* name, uid_t* uid, gid_t* gid);

// Returns the id of a group that must exist, given as its name or as a decimal number. An unknown
// group is reported and ends the process with code 1.
gid_t get_group_id(const char* nameOrNumber);

// The same for a name only, and for a number only.
gid_t get_gid_by_name(const char* name);
gid_t get_gid_by_id(gid_t gid);

// Returns the name of a user, or the number in decimal if it has none, in a static buffer that the
// next call overwrites.
const char* get_user_name(uid_t uid);
