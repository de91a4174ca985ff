#pragma once

#include <cstdint>

namespace kelvara::sync {

/// The relation that grid and report use: AA Sync units = phase / 4.5 rounded, metres = AA Sync
/// units × 130. The rounding comes before the multiplication, so lengths are whole sync units and
/// every length is a multiple of 130. The converter has a relation of its own, on purpose.
inline constexpr double kRfpsUnitsPerAaSyncUnit = 4.5;
inline constexpr std::int32_t kMetresPerAaSyncUnit = 130;

/// Phase in RFPS units to whole AA Sync units, a half going to the even one.
std::int32_t ToAaSyncUnits(std::int32_t phase);

/// Phase in RFPS units to metres; a product that leaves 32 bits is an overflow fault.
std::int32_t ToMetres(std::int32_t phase);

}  // namespace kelvara::sync
