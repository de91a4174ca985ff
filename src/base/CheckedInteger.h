#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvara::base {

/// Returns the value as a signed 16-bit integer. A value outside -32768 to 32767 is an overflow
/// fault.
std::int16_t ToInt16(std::int64_t value);

/// Returns the value as a signed 32-bit integer. A value outside its range is an overflow fault.
std::int32_t ToInt32(std::int64_t value);

/// 16-bit signed arithmetic: a result that does not fit in 16 bits is an overflow fault.
inline std::int16_t Add16(std::int16_t left, std::int16_t right) { return ToInt16(left + right); }
inline std::int16_t Subtract16(std::int16_t left, std::int16_t right) {
  return ToInt16(left - right);
}
inline std::int16_t Multiply16(std::int16_t left, std::int16_t right) {
  return ToInt16(std::int64_t{left} * right);
}

/// 32-bit signed arithmetic: a result that does not fit in 32 bits is an overflow fault.
inline std::int32_t Add32(std::int32_t left, std::int32_t right) {
  return ToInt32(std::int64_t{left} + right);
}
inline std::int32_t Multiply32(std::int32_t left, std::int32_t right) {
  return ToInt32(std::int64_t{left} * right);
}

/// Throws a subscript fault.
[[noreturn]] void ThrowSubscript();

/// Returns the index if it is valid for a table of `size` entries; otherwise throws a subscript
/// fault.
inline std::size_t CheckedIndex(std::int64_t index, std::size_t size) {
  // Converted to unsigned, a negative index exceeds any size.
  if (static_cast<std::uint64_t>(index) >= size) {
    ThrowSubscript();
  }
  return static_cast<std::size_t>(index);
}

/// The entry at an index. An index outside the table is a subscript fault.
template <typename Table>
auto& At(Table& table, std::int64_t index) {
  return table[CheckedIndex(index, table.size())];
}

}  // namespace kelvara::base
