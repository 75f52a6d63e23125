// qbgrerr.h - error reporting: one error page or text, then the end of the run.
//
// Formats know %d (int32_t), %u (uint32_t), %f (double, six decimals) and %s (text), without width, precision or
// flags. A "%" before any other character is dropped and the character is written.
#pragma once

#include <cstdint>
#include <cstdio>

// Chooses where errors go.
//   stream   not owned; null: standard error, which is also where errors go at first
// Returns 1, or 0 for null.
int32_t SetErrStream(FILE *stream);

// Writes a message to the error stream and nothing else, and goes on. Returns 0.
[[gnu::format(printf, 1, 2)]] int32_t Error(const char *format, ...);

// Writes a whole error document with the message in it to the driver's error stream (OpenErrStream), has the driver
// release everything (CleanUp) and ends the process with status 255. The document is an HTML page with its header;
// where the environment has STAND_ALONE it is plain text. In the page, "<", ">" and "&" of the arguments (not those of
// the format) become entities, so that no posted text turns into markup.
[[noreturn]] [[gnu::format(printf, 1, 2)]] void ExitWithError(const char *format, ...);
