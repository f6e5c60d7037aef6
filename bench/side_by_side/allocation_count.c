/* Counts every call to the C allocator in this process: operator new of the
 * C++ runtime ends in malloc too, so both codecs are counted the same way.
 * glibc's own entry points do the allocating. */
#include <stddef.h>

#include "bench/side_by_side/allocation_count.h"

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);

static unsigned long long allocations;

unsigned long long AllocationCount(void) { return allocations; }

void* malloc(size_t size) {
  ++allocations;
  return __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
  ++allocations;
  return __libc_calloc(count, size);
}

/* Growing a block is an allocation as far as cost goes. */
void* realloc(void* block, size_t size) {
  ++allocations;
  return __libc_realloc(block, size);
}
