// exit_trap.h - lets code that ends the process come back instead, for fuzzing, where a fork for each input costs too
// much.
#pragma once

#include <functional>

// Runs work in this process. Returns true when it came to its end, false when it called exit. An error page goes to
// /dev/null, and the driver's records are empty afterwards. The calls between here and exit are cut off as they are, so
// nothing there may need a destructor.
bool RunTrapped(const std::function<void()> &work);
