#include "base/Rounding.h"

#include <cmath>
#include <limits>

#include "base/Fault.h"

namespace kelvara::base {
namespace {

template <typename Integer>
Integer RoundTo(double value) {
  // In the default rounding mode, a half rounds to the even neighbour.
  const double rounded = std::nearbyint(value);
  // Written so that NaN fails the check too.
  if (!(rounded >= std::numeric_limits<Integer>::min() &&
        rounded <= std::numeric_limits<Integer>::max())) {
    throw Fault(FaultKind::Overflow, "Overflow");
  }
  return static_cast<Integer>(rounded);
}

}  // namespace

std::int16_t Round16(double value) { return RoundTo<std::int16_t>(value); }

std::int32_t Round32(double value) { return RoundTo<std::int32_t>(value); }

}  // namespace kelvara::base
