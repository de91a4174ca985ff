#pragma once

#include <cstdint>

namespace kelvara::convert {

/// One length of cable in the converter's five units.
struct SyncUnits {
  double rfps = 0.0;        ///< RFPS phase.
  std::int16_t aaSync = 0;  ///< Whole AA Sync units.
  double metres = 0.0;      ///< Cable length.
  double ohms = 0.0;        ///< Loop resistance.
  double delay = 0.0;       ///< Delay in microseconds.
};

/// Computes the five units from an RFPS phase, with the converter's own formulas: metres = phase ×
/// 29, AA Sync units = metres / 130 rounded half to even, delay = phase × 0.09645, ohms = (metres +
/// 1.6) × 0.094 × 2. The 1.6 is a length, added before the resistance is computed. A number of AA
/// Sync units outside 16 bits is an overflow fault.
SyncUnits FromRfps(double rfps);

/// The same from a number of AA Sync units. It is rounded first and the metres are computed in 16
/// bits, so that a number outside -252 to 252 is an overflow fault.
SyncUnits FromAaSync(double aaSync);

/// The same from a cable's length in metres.
SyncUnits FromMetres(double metres);

/// The same from the loop's resistance in ohms.
SyncUnits FromOhms(double ohms);

/// The same from a delay in microseconds.
SyncUnits FromDelay(double delay);

}  // namespace kelvara::convert
