// Runs one child process: feeds it a text on standard input while its standard output and standard
// error are gathered, waits for it and turns its end into one integer.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "exec/arg_list.h"
#include "exec/confinement.h"
#include "exec/environment.h"
#include "exec/keep_user.h"

namespace zelvo {

// The full form; the others forward to it.
//
// input: what the child reads, to its last byte. outText, errText: what the child writes is
// appended to them. utility: path of the program; without a slash it is looked for in the child's
// PATH as execvp does. args: the child's arguments, argv[0] first. uid: the user that the child
// becomes, or kKeepUser; its groups stay. env: set over the inherited environment, in the map's
// order. confinement: what else the child may not do, and whether its output is kept in full.
// hasStarted: set to whether the child became its program, if it is not null.
//
// Returns the child's exit status, or -1 when a signal ended it, it wrote too much, or waiting for
// it failed. A program that cannot be started is told as one that failed: 1, with the reason in
// both texts; so is a child that cannot take its user, its environment or its fence, with the
// reason in errText alone. Returns only when nobody holds the child's output any more, be it a
// grandchild.
//
// Raises SystemError (POSIX vfork, poll, read, write) with what failed. A child that stops reading
// before the end of a text that its pipe cannot hold makes the write fail. What was gathered until
// then stays in the texts; the child is not waited for. Pipes that cannot be made end the process
// with status 1.
//
// SIGPIPE is ignored and SIGCHLD has its default disposition in this process while the child runs;
// the child gets the default disposition of every signal, an empty mask and the descriptors 0 to 2.
int forkExecvGetInOutErrSuidEnv(std::string_view input, std::string& outText, std::string& errText,
                                const std::string& utility, const ArgList& args, std::uint32_t uid,
                                const Environment& env, const Confinement& confinement = {},
                                bool* hasStarted = nullptr);

// The same with nothing on standard input.
int forkExecvGetOutErrSuidEnv(std::string& outText, std::string& errText,
                              const std::string& utility, const ArgList& args, std::uint32_t uid,
                              const Environment& env);

// The same with the inherited environment.
int forkExecvGetOutErrSuid(std::string& outText, std::string& errText, const std::string& utility,
                           const ArgList& args, std::uint32_t uid);

// The same as the current user.
int forkExecvGetOutErr(std::string& outText, std::string& errText, const std::string& utility,
                       const ArgList& args);

// The same; what the child writes to standard error is dropped.
int forkExecvGetOut(std::string& outText, const std::string& utility, const ArgList& args);

// Starts a child and returns its process id, which the caller has to wait for.
//
// inFd, outFd, errFd: become the child's 0, 1 and 2 as dup2Custom does it, and stay open here; no
// other descriptor reaches the child. The rest as in the full form. A child that could not become
// its program has status 1 and the reason has been written to outFd and errFd (errFd alone for its
// user and environment). Raises SystemError (POSIX vfork).
pid_t forkExecvPipes(int inFd, int outFd, int errFd, const std::string& utility,
                     const ArgList& args, std::uint32_t uid, const Environment& env);

// Makes target the stream of source and closes source. Equal descriptors are left alone, and a
// source of -1 stands for /dev/null. Returns what dup2 (POSIX) returned. Raises SystemError when
// /dev/null cannot be opened.
int dup2Custom(int source, int target);

// Appends to text what a descriptor holds. most: bytes after which it stops, give or take a block.
// Returns false at end of file and true when a read would block or that many were read. Raises
// SystemError (POSIX read).
bool readToString(int fd, std::string& text, std::size_t most = std::string::npos);

// Writes as much as a descriptor takes and removes that much from the front of text; a view, since
// taking 64 MB from the front of a string in steps of a pipe's size would move them a thousand
// times. Returns when text is empty or a write would block. Raises SystemError (POSIX write); text
// then holds what was not written.
void writeFromString(int fd, std::string_view& text);

}  // namespace zelvo
