#include "qt/ProcessMemory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kelvara::qt {

void UseOneHeap() {
#ifdef __GLIBC__
  mallopt(M_ARENA_MAX, 1);
#endif
}

void ReturnFreeMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace kelvara::qt
