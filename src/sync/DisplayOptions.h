#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/MenuBar.h"

namespace kelvara::sync {

/// The units that phases are shown in.
enum class PhaseUnits { Rfps, AaSync, Metres };

/// How antennas and phases are shown: a reading of the option menus' check marks, made anew each
/// time it is asked.
class DisplayOptions {
 public:
  explicit DisplayOptions(const platform::MenuBar& menuBar) : menuBar_(&menuBar) {}

  /// The first of the three unit entries that is checked; nothing when none is.
  std::optional<PhaseUnits> Units() const;

  /// RPN in hexadecimal, else decimal.
  bool RpnHex() const { return menuBar_->IsChecked(platform::MenuEntry::mnuRpnHex); }

  bool FpsShown() const { return menuBar_->IsChecked(platform::MenuEntry::mnuFpsOn); }

  /// An antenna's RPN in the chosen base, at least two digits.
  std::string RpnText(std::int16_t rpn) const;

  /// The RPN and, where FPS values are shown, the FPS in brackets: "0A[3]".
  std::string AaText(std::int16_t rpn, std::int16_t fps) const;

 private:
  const platform::MenuBar* menuBar_;
};

}  // namespace kelvara::sync
