/* The number of allocator calls (malloc, calloc, realloc) so far in this
 * process; the difference across a piece of work is what it allocated. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

unsigned long long AllocationCount(void);

#ifdef __cplusplus
}
#endif
