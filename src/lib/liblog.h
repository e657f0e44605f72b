// How the C layer speaks: the message function, which may also end the process, and the pair of
// log functions, which nobody hears until they have been chosen.
#pragma once

#include <cstdarg>

// Formats a message, adds "\nSystem error N: TEXT" when errno is not 0, and hands it to
// ex_messlog. errno is left as it was. exitCode: 0 returns, any other value ends the process with
// it. flag: has no effect. format: as in printf.
void messlog2(int exitCode, int flag, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// The same with the arguments as a va_list, which the call uses up.
void vmesslog2(int exitCode, int flag, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

// Writes the text to standard error and then to standard output, on each with a line feed behind
// it unless it ends in one, and flushes. With a program name set, its base name and ": " stand in
// front. exitCode: 0 returns, any other value ends the process with exit(3). flag: has no effect.
void ex_messlog(const char* text, int exitCode, int flag);

// Sets the program name for ex_messlog: a path, of which the last part is shown, or null for none,
// as it is at start. The text is not copied: it must live as long as it is set.
void zelvo_set_program_name(const char* path);

// A function of the form of syslog(3). priority: facility and severity as syslog takes them.
using zelvo_log_function = void (*)(int priority, const char* format, ...);

// A function of the form of vsyslog(3).
using zelvo_logv_function = void (*)(int priority, const char* format, va_list arguments);

// The log functions in use. At start both are silent.
extern zelvo_log_function zelvo_log __attribute__((format(printf, 2, 3)));
extern zelvo_logv_function zelvo_logv __attribute__((format(printf, 2, 0)));

// Chooses the log functions.
// target: null for syslog; a text that begins with "console", in whatever case, for standard
//   error; any other text for silence.
// level: below 1 for silence; otherwise the severity (syslog's 0 to 7) up to which the console
//   shows messages. Syslog does its own choosing.
// facility, options, ident: as openlog(3) takes them; LOG_PID is added to the options. Used for
//   syslog only. ident is not copied: it must live as long as logging goes on.
void zelvo_log_init(const char* target, int level, int facility, int options, const char* ident);
