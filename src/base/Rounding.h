#pragma once

#include <cstdint>

namespace kelvara::base {

/// Rounds to the nearest 16-bit signed integer, and a half to the even neighbour (2.5 gives 2, 3.5
/// gives 4). NaN or a result outside the range is an overflow fault.
std::int16_t Round16(double value);

/// The same for a 32-bit signed integer.
std::int32_t Round32(double value);

}  // namespace kelvara::base
