#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kelvara::sync {

/// The units in which phases are shown.
enum class PhaseUnits { Rfps, AaSync, Metres };

/// How antennas and phases are shown. The options are read whenever a value is formatted, so a
/// change applies to the next value.
struct DisplayOptions {
  /// Empty if no unit is chosen: the grid then shows metres, and the export names no unit.
  std::optional<PhaseUnits> units = PhaseUnits::Rfps;

  /// Whether RPN and FPS are hexadecimal rather than decimal.
  bool rpnHex = false;

  /// Whether an antenna's FPS is shown after its RPN.
  bool fpsShown = false;

  /// An antenna's RPN in the chosen base, with at least two digits.
  std::string RpnText(std::int16_t rpn) const;

  /// The RPN and, if FPS values are shown, the FPS in brackets: "0A[3]".
  std::string AaText(std::int16_t rpn, std::int16_t fps) const;
};

}  // namespace kelvara::sync
