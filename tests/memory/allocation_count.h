/* Counts what the C allocator hands out in this process: calls (malloc,
 * calloc, realloc and the aligned forms; operator new ends in malloc too) and
 * bytes, live and at their peak. Bytes are the usable sizes of the blocks
 * (malloc_usable_size), so the allocator's rounding counts and its per-block
 * header does not. Link allocation_count.c into a program of its own (it
 * replaces malloc and free); not with the sanitizers, which replace them
 * too. The counters are plain: use it from one thread. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Allocator calls so far; the difference across a piece of work is what it
 * allocated. */
unsigned long long AllocationCount(void);
/* Bytes in blocks not freed yet. */
unsigned long long AllocatedBytesLive(void);
/* The most bytes live at once since the last AllocationResetPeak (or the
 * start). */
unsigned long long AllocatedBytesPeak(void);
/* Starts a new peak from what is live now. */
void AllocationResetPeak(void);

#ifdef __cplusplus
}
#endif
