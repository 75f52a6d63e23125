// qbos.h - the operating-system layer shared by the package's programs.
//
// Nothing here reports an error in words: a failure is a return value, and the caller decides what to say. Paths hold
// at most 255 characters; a longer one is refused and never cut, because a cut path names another file.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>

// Begins and ends the layer's work. Nothing to do on this platform.
void OSInit();
void OSCleanUp();

// Appends "name=value" to the layer's private block of settings.
// Returns the bytes of the block then in use; 0 when there is no block or the entry does not fit. The process
// environment stays as it is, so that OSGetEnv never finds such an entry.
int32_t OSSetEnv(const char *name, const char *value);

// Looks a name up in the process environment. Returns its value, not owned, or null.
const char *OSGetEnv(const char *name);

// Starts a shell command with a pipe to it ("w") or from it ("r"). Returns the stream, or null.
FILE *OSPipeOpen(const char *command, const char *mode);

// Closes such a stream and waits for the command. Always returns 1.
int32_t OSPipeClose(FILE *pipe);

// Hands a mail to a mail transfer program that reads the recipients from the headers ("-t").
//   mailer               shell command; with its "-t" at most 255 characters
//   cc, bcc              null: without that header
//   subject, body        null: empty
// Returns 1 when the mail was handed over; 0 when to is null or the program cannot be started.
int32_t OSSendEmail(const char *mailer, const char *to, const char *cc, const char *bcc, const char *subject,
                    const char *body);

// Renames a file. Returns 0, or the system's error result.
int32_t OSRenameFile(const char *from, const char *to);

// Removes one file. Returns 0, or the system's error result.
int32_t OSRemoveFile(const char *path);

// Removes every file of a directory with the shell command "rm DIR/*".
//   dir      one trailing "/" is dropped
// Returns the shell's status; -1 for a null, empty or too long argument, and nothing is removed then. Letters, digits
// and . _ - / * ? [ ] mean to the shell what they always mean there; every other character is quoted and stands for
// itself. A relative directory that begins with "-" is written "./-", so that rm does not take it for an option.
int32_t OSRemoveAll(const char *dir);

// The same with "rm DIR/PATTERN".
//   pattern  a shell pattern for file names
int32_t OSRemoveMatch(const char *dir, const char *pattern);

// Replaces the permission bits of a file.
//   modeText "r", "w" and "x" anywhere in it allow reading, writing and executing to everybody; others mean nothing
// Returns 0, or -1 for a null modeText, a path that is too long, or a failure.
int32_t OSChangeMod(const char *path, const char *modeText);

// Replaces this process with another program; buffered standard output is written first.
//   path     the program, also its first argument
//   ...      further arguments, const char *, the last one null; at most 18 are passed on
// Returns only when the program cannot be started: -1, with the reason in errno.
int32_t OSExecute(const char *path, ...);

// Turns a path into this platform's form, in place. Returns path, unchanged here.
char *OSCorrectPath(char *path);

// Reads a hexadecimal number: white space, an optional 0x, then at most 8 digits; what follows is ignored.
// Returns 0 for a null text or one that does not begin with a digit.
uint32_t OSHexToUL(const char *text);

// Returns the time between two moments in seconds, never negative, whichever of them is the earlier one.
double OSDiffTime(time_t t1, time_t t0);

// Returns the process id, and writes it in decimal to a stream unless that is null.
int32_t OSSaveProcessID(FILE *file);
