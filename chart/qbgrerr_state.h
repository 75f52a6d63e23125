// qbgrerr_state.h - what only the error reporter and its tests see. Private to qbgrerr.cpp.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <cstdio>

// Writes a message.
//   fHtml    "<", ">" and "&" of text arguments become entities
// Returns the number of conversions done.
int32_t PrintError(FILE *stream, const char *format, va_list args, bool fHtml);
