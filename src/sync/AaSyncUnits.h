#pragma once

#include <cstdint>

namespace kelvara::sync {

/// The conversion that grid and report use: AA Sync units = phase / 4.5 rounded, metres = AA Sync
/// units × 130. Rounding comes before multiplication, so every length is a multiple of 130. The
/// converter deliberately uses another conversion.
inline constexpr double kRfpsUnitsPerAaSyncUnit = 4.5;
inline constexpr std::int32_t kMetresPerAaSyncUnit = 130;

/// Converts a phase in RFPS units to whole AA Sync units, rounding half to even.
std::int32_t ToAaSyncUnits(std::int32_t phase);

/// Converts a phase in RFPS units to metres. A product outside 32 bits is an overflow fault.
std::int32_t ToMetres(std::int32_t phase);

}  // namespace kelvara::sync
