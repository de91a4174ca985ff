#include "base/CheckedInteger.h"

#include <limits>

#include "base/Fault.h"

namespace kelvara::base {
namespace {

template <typename Integer>
Integer ToInteger(std::int64_t value) {
  if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max()) {
    throw Fault(FaultKind::Overflow, "Overflow");
  }
  return static_cast<Integer>(value);
}

}  // namespace

std::int16_t ToInt16(std::int64_t value) { return ToInteger<std::int16_t>(value); }

std::int32_t ToInt32(std::int64_t value) { return ToInteger<std::int32_t>(value); }

void ThrowSubscript() { throw Fault(FaultKind::Subscript, "Subscript out of range"); }

}  // namespace kelvara::base
