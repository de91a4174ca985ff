#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kelvara::sync {

/// The units that phases are shown in.
enum class PhaseUnits { Rfps, AaSync, Metres };

/// How antennas and phases are shown. Everything that formats a value reads the options at that
/// moment, so a change shows in what is formatted next.
struct DisplayOptions {
  /// Nothing where no unit is chosen: the grid then shows metres, and the export names no unit.
  std::optional<PhaseUnits> units = PhaseUnits::Rfps;

  /// RPN and FPS in hexadecimal, else decimal.
  bool rpnHex = false;

  /// Whether an antenna's FPS is shown behind its RPN.
  bool fpsShown = false;

  /// An antenna's RPN in the chosen base, at least two digits.
  std::string RpnText(std::int16_t rpn) const;

  /// The RPN and, where FPS values are shown, the FPS in brackets: "0A[3]".
  std::string AaText(std::int16_t rpn, std::int16_t fps) const;
};

}  // namespace kelvara::sync
