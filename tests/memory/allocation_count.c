/* Replaces the C allocator's entry points with glibc's own plus counting:
 * every block's usable size is added when it is handed out and taken off
 * when it comes back. */
#include "tests/memory/allocation_count.h"

#include <errno.h>
#include <malloc.h>
#include <stddef.h>

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);
extern void* __libc_memalign(size_t alignment, size_t size);
extern void __libc_free(void* block);

static unsigned long long allocations;
static unsigned long long live;
static unsigned long long peak;

unsigned long long AllocationCount(void) { return allocations; }
unsigned long long AllocatedBytesLive(void) { return live; }
unsigned long long AllocatedBytesPeak(void) { return peak; }
void AllocationResetPeak(void) { peak = live; }

static void* Counted(void* block) {
  if (block != NULL) {
    live += malloc_usable_size(block);
    if (live > peak) peak = live;
  }
  return block;
}

static void Uncount(void* block) {
  if (block != NULL) live -= malloc_usable_size(block);
}

void* malloc(size_t size) {
  ++allocations;
  return Counted(__libc_malloc(size));
}

void* calloc(size_t count, size_t size) {
  ++allocations;
  return Counted(__libc_calloc(count, size));
}

/* Growing a block is an allocation as far as cost goes. */
void* realloc(void* block, size_t size) {
  ++allocations;
  const size_t before = block != NULL ? malloc_usable_size(block) : 0;
  void* moved = __libc_realloc(block, size);
  if (moved == NULL && size != 0) return NULL; /* the old block stays */
  live -= before;
  return Counted(moved);
}

void free(void* block) {
  Uncount(block);
  __libc_free(block);
}

void* memalign(size_t alignment, size_t size) {
  ++allocations;
  return Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }

int posix_memalign(void** out, size_t alignment, size_t size) {
  if (alignment < sizeof(void*) || (alignment & (alignment - 1)) != 0) return EINVAL;
  void* block = memalign(alignment, size);
  if (block == NULL) return ENOMEM;
  *out = block;
  return 0;
}
