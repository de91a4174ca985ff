#include "sync/DisplayOptions.h"

#include "base/NumberFormat.h"
#include "sync/HexPad.h"

namespace kelvara::sync {

std::string DisplayOptions::RpnText(std::int16_t rpn) const {
  return rpnHex ? HexPad(rpn, 2) : base::FormatTwoDigits(rpn);
}

std::string DisplayOptions::AaText(std::int16_t rpn, std::int16_t fps) const {
  std::string text = RpnText(rpn);
  if (fpsShown) {
    text += '[';
    text += rpnHex ? HexPad(fps, 1) : std::to_string(fps);
    text += ']';
  }
  return text;
}

}  // namespace kelvara::sync
