// The one way in which the C layer itself runs a child. Everything above it has a runner of its
// own.
#pragma once

// Runs a program and waits for it.
// path: the program; it is not looked for in PATH.
// argv: its arguments, argv[0] first, ended by null.
// inFd, outFd: what the child gets as descriptors 0 and 1. inFd must be below outFd unless outFd is
//   above 1, which two descriptors opened in this order always are. They stay open in the parent.
// The child inherits standard error and the environment, no other descriptor, and starts with
// default dispositions and an empty mask for its signals.
// Returns the exit status, or -1 when the program could not be started (errno says why) or was
// ended by a signal.
int fork_execv_fd(const char* path, char* const argv[], int inFd, int outFd);
