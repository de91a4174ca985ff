#include "sync/AaSyncUnits.h"

#include "base/CheckedInteger.h"
#include "base/Rounding.h"

namespace kelvara::sync {

std::int32_t ToAaSyncUnits(std::int32_t phase) {
  return base::Round32(phase / kRfpsUnitsPerAaSyncUnit);
}

std::int32_t ToMetres(std::int32_t phase) {
  return base::Multiply32(ToAaSyncUnits(phase), kMetresPerAaSyncUnit);
}

}  // namespace kelvara::sync
