#pragma once

#include <cstdint>

namespace kelvara::bench {

/// The number of memory allocations of this program so far.
std::int64_t AllocationCount();

}  // namespace kelvara::bench
