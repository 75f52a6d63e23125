// alloc_fail.h - makes the program's nth request for memory fail.
#pragma once

#include <cstdint>

// Makes the nth request (1: the next one) from the calls of malloc and calloc in this program fail, once. 0 takes
// an order back that was not carried out. Requests made inside the C and C++ libraries are not counted.
void FailAllocation(int64_t n);

// Whether the ordered failure has happened since the last FailAllocation.
bool AllocationFailed();
