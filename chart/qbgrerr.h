// qbgrerr.h - error reporting: one error page or text, then the end of the run.
#pragma once

#include <cstdint>
#include <cstdio>

int32_t SetErrStream(FILE *stream);
int32_t Error(const char *format, ...);
[[noreturn]] void ExitWithError(const char *format, ...);
