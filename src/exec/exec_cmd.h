// One external command: its arguments and environment, its run and what the run gave.
#pragma once

#include <cstdint>
#include <cstdio>
#include <new>
#include <string>

#include "commons/exception.h"
#include "exec/arg_list.h"
#include "exec/confinement.h"
#include "exec/environment.h"
#include "exec/process.h"

namespace zelvo {

// Where arguments and variables are appended by those who need not know what will run them.
//
// The only form that takes an argument is the one for strings, and it is virtual: whatever is
// appended through a CmdLine, a literal too, reaches the command's own rule for options.
class CmdLine {
  public:
    virtual ~CmdLine() = default;

    // Appends one argument. Returns the command.
    virtual CmdLine& operator<<(const std::string& argument) = 0;
    // Inserts or replaces a variable of the child's environment.
    virtual void setEnv(const std::string& name, const std::string& value) = 0;

  protected:
    CmdLine() = default;
    CmdLine(const CmdLine&) = default;
    CmdLine& operator=(const CmdLine&) = default;
};

// A command that runs as a child process.
class ExecCmd : public CmdLine {
  public:
    // The command ended with a code other than 0.
    static void Failed(bool) {}

    // path: of the utility, also the first argument (argv[0]).
    explicit ExecCmd(const std::string& path);

    ExecCmd& operator<<(const std::string& argument) override;
    // The same, and never more than that: a derived class's rule for options does not apply to it.
    // A derived class that has such a rule hides this form, so that a literal becomes a string.
    ExecCmd& operator<<(const char* argument);
    void setEnv(const std::string& name, const std::string& value) override;

    // Runs the command. Returns 0. Raises Failed for any other code, and SystemError when the run
    // itself fails.
    virtual int exec();
    // Runs the command. Returns its code: the exit status, -1 for an end by a signal, 1 for a
    // program that cannot be started. A run that itself fails ends the process.
    virtual int exec(std::nothrow_t) noexcept;
    // Runs the command and fills the results. Returns retCode. A second run appends its output to
    // that of the first. Raises SystemError as forkExecvGetInOutErrSuidEnv does.
    virtual int execCmdLine();

    // The command as one line of shell text: the arguments, quoted, with one blank between them.
    std::string getString() const;

    // Raises Failed with the command, its code and the three streams.
    [[noreturn]] void reportError() const;

    ArgList args;
    std::string utility;
    std::string stdin;
    Environment env;
    std::string stdout;
    std::string stderr;
    // A run has begun.
    bool started = false;
    // A run has come to its end; the results are those of it.
    bool finished = false;
    // The program could not be started, so that the code is none of its own.
    bool couldNotStart = false;
    // errno right after the run.
    std::int32_t savedErrno = 0;
    // The code of the run: see exec(nothrow).
    std::int32_t retCode = 0;
    // The user that the child becomes.
    std::uint32_t uid = kKeepUser;
    // What it points to has to live until the run ends.
    Confinement confinement;
};

// The output of a finished command as text for the debug log. Its first line stops short of the
// return code, which the caller logs.
std::string getReport(const ExecCmd& command);

}  // namespace zelvo

ERROR_DEFINITION(zelvo::ExecCmd::Failed, "ExecCmd::Failed",
                 "Execution of %1% failed with return code %2%.\n%3%%4%%5%");
