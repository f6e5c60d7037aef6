/* Counts what the C allocator hands out in this process (operator new ends in
 * malloc too): calls, and the usable sizes of the blocks live and at their
 * peak. Link allocation_count.c into a program of its own, as it replaces
 * malloc and free; not with the sanitizers, which replace them too. The
 * counters are plain: use it from one thread. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

unsigned long long AllocationCount(void);    /* allocator calls so far */
unsigned long long AllocatedBytesLive(void); /* bytes in blocks not freed yet */
unsigned long long AllocatedBytesPeak(void); /* the most live at once since the last reset */
void AllocationResetPeak(void);              /* starts a new peak from what is live now */

#ifdef __cplusplus
}
#endif
