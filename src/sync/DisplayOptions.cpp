#include "sync/DisplayOptions.h"

#include "base/NumberFormat.h"
#include "sync/HexPad.h"

namespace kelvara::sync {

using platform::MenuEntry;

std::optional<PhaseUnits> DisplayOptions::Units() const {
  if (menuBar_->IsChecked(MenuEntry::mnuDispRFPS)) {
    return PhaseUnits::Rfps;
  }
  if (menuBar_->IsChecked(MenuEntry::mnuDispSync)) {
    return PhaseUnits::AaSync;
  }
  if (menuBar_->IsChecked(MenuEntry::mnuDispMetres)) {
    return PhaseUnits::Metres;
  }
  return std::nullopt;
}

std::string DisplayOptions::RpnText(std::int16_t rpn) const {
  return RpnHex() ? HexPad(rpn, 2) : base::FormatTwoDigits(rpn);
}

std::string DisplayOptions::AaText(std::int16_t rpn, std::int16_t fps) const {
  std::string text = RpnText(rpn);
  if (FpsShown()) {
    text += '[';
    text += RpnHex() ? HexPad(fps, 1) : std::to_string(fps);
    text += ']';
  }
  return text;
}

}  // namespace kelvara::sync
