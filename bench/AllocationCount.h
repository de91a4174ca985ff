#pragma once

#include <cstdint>

namespace kelvara::bench {

/// How often this program has asked for memory so far.
std::int64_t AllocationCount();

}  // namespace kelvara::bench
