// alloc_fail.cpp - the linker sends every malloc and calloc of the program here.

#include "alloc_fail.h"

#include <cstddef>

extern "C"
{
    void *__real_malloc(size_t size);
    void *__real_calloc(size_t count, size_t size);
    void *__wrap_malloc(size_t size);
    void *__wrap_calloc(size_t count, size_t size);
}

// The failure on order; FailAllocation sets all of it.
static struct _FailState
{
    int64_t left; // requests up to and including the one that fails; 0: none fails
    bool failed;  // the order was carried out
} _fail = {0, false};

void FailAllocation(int64_t n)
{
    _fail = {n, false};
}

bool AllocationFailed()
{
    return _fail.failed;
}

// Counts one request; true when it is the one to fail.
static bool _isToFail()
{
    if (_fail.left == 0 || --_fail.left > 0)
    {
        return false;
    }
    _fail.failed = true;
    return true;
}

extern "C"
{
    void *__wrap_malloc(size_t size)
    {
        return _isToFail() ? nullptr : __real_malloc(size);
    }

    void *__wrap_calloc(size_t count, size_t size)
    {
        return _isToFail() ? nullptr : __real_calloc(count, size);
    }
}
