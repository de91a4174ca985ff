#pragma once

#include <cstdint>
#include <span>

namespace kelvara::sync {

/// Sorts values[first] to values[last], both inclusive, ascending and in place. If first ≥ last,
/// nothing happens; an index outside the table is a subscript fault.
void SortIntegers(std::span<std::int16_t> values, std::int16_t first, std::int16_t last);

}  // namespace kelvara::sync
