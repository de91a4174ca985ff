#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::report {

/// The estimated cable lengths of the antennas, from how far each antenna's phase leads the others
/// and how far the others lag behind it.
class CableLengths {
 public:
  /// Computes the delay of each of the model's antennas. A mean or delay outside 16 bits is an
  /// overflow fault, an antenna beyond the model's tables a subscript fault.
  explicit CableLengths(const sync::SyncModel& model);

  /// The delay estimate of an antenna, in RFPS units.
  std::int16_t AaDelay(int aa) const;

  /// Its cable length in metres, a multiple of 130.
  std::int32_t Metres(int aa) const;

 private:
  std::array<std::int16_t, sync::kMaxAas> AaDelay_{};
};

/// The cable length of every antenna that the model holds, in metres; nothing where the report
/// faults.
std::vector<std::optional<std::int32_t>> ReportedMetres(const sync::SyncModel& model);

/// The mean phase of a cell that has readings, with halves rounded to even; a mean outside 16 bits
/// is an overflow fault.
std::int16_t MeanPhase(const sync::PhaseCell& cell);

}  // namespace kelvara::report
