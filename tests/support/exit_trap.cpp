// exit_trap.cpp - this program's own exit stands before the C library's and jumps back while a trap is set.

#include "exit_trap.h"

#include "qbchart_state.h"

#include <csetjmp>
#include <cstdlib>
#include <dlfcn.h>

// The trap; RunTrapped sets it and takes it back.
static struct _Trap
{
    bool fSet;
    std::jmp_buf back;
} _trap = {};

extern "C" void exit(int status) noexcept
{
    if (_trap.fSet)
    {
        std::longjmp(_trap.back, 1);
    }
    using Exit = void (*)(int);
    reinterpret_cast<Exit>(dlsym(RTLD_NEXT, "exit"))(status);
    std::abort();
}

bool RunTrapped(const std::function<void()> &work)
{
    _SetErrStreamName("/dev/", "null");
    _aErrFilename[sizeof "/dev/null" - 1] = '\0'; // without the ending of error files
    _trap.fSet = true;
    const bool fEnded = setjmp(_trap.back) == 0; // NOLINT(cert-err52-cpp): there is no other way out of exit
    if (fEnded)
    {
        work();
    }
    _trap.fSet = false;
    CleanUp();
    return fEnded;
}
