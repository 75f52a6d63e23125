// qbos_state.h - what only the operating-system layer and its tests see. Private to qbos.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

// The private block: texts of the form name=value, each with its terminator, packed one after the other.
extern char *_pEnv;      // kEnvBytes bytes, owned; null until _InitEnv
extern int32_t _envSize; // bytes in use, 0 .. kEnvBytes - 1

constexpr int32_t kEnvBytes = 2048;

// The longest removal command: "rm " and "./", directory, "/", pattern. Quoting makes at most three characters of one.
constexpr size_t kMaxPath = 255;
constexpr size_t kRemoveCommandSize = 3 + 2 + 3 * kMaxPath + 1 + 3 * kMaxPath + 1;

// Makes the private block, empty. Returns it, or null without memory. Nothing in the program needs it so far.
char *_InitEnv();

// Releases the private block, if there is one.
void _KillEnv();

// Writes the shell command that removes the files of a directory that match a pattern.
//   command  kRemoveCommandSize bytes
// Returns 1; 0 for a null, empty or too long text, and command is then not to be used.
int32_t _MakeRemoveCommand(char *command, const char *dir, const char *pattern);

// Copies a text in upper case, without its terminator: dest must already end where the copy ends. Returns dest.
char *_Strtoup(char *dest, const char *source);
