#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvara::base {

/// The value as a signed 16-bit integer; outside -32768 to 32767 an overflow fault.
std::int16_t ToInt16(std::int64_t value);

/// The value as a signed 32-bit integer; outside its range an overflow fault.
std::int32_t ToInt32(std::int64_t value);

/// 16-bit signed arithmetic: a result that leaves 16 bits is an overflow fault.
inline std::int16_t Add16(std::int16_t left, std::int16_t right) { return ToInt16(left + right); }
inline std::int16_t Subtract16(std::int16_t left, std::int16_t right) {
  return ToInt16(left - right);
}
inline std::int16_t Multiply16(std::int16_t left, std::int16_t right) {
  return ToInt16(std::int64_t{left} * right);
}

/// 32-bit signed arithmetic: a result that leaves 32 bits is an overflow fault.
inline std::int32_t Add32(std::int32_t left, std::int32_t right) {
  return ToInt32(std::int64_t{left} + right);
}
inline std::int32_t Multiply32(std::int32_t left, std::int32_t right) {
  return ToInt32(std::int64_t{left} * right);
}

/// Fails with a subscript fault.
[[noreturn]] void ThrowSubscript();

/// The index as it stands when it lies inside a table of `size` entries, else a subscript fault.
inline std::size_t CheckedIndex(std::int64_t index, std::size_t size) {
  // A negative index is larger than any size once it is taken without its sign.
  if (static_cast<std::uint64_t>(index) >= size) {
    ThrowSubscript();
  }
  return static_cast<std::size_t>(index);
}

/// The entry of a table, with the index checked.
template <typename Table>
auto& At(Table& table, std::int64_t index) {
  return table[CheckedIndex(index, table.size())];
}

}  // namespace kelvara::base
