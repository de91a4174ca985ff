#include "AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

std::int64_t allocationCount = 0;

void* Allocate(std::size_t size) {
  ++allocationCount;
  if (void* memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

namespace kelvara::bench {

std::int64_t AllocationCount() { return allocationCount; }

}  // namespace kelvara::bench

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
