#include "survey/Figures.h"

#include <array>
#include <charconv>

#include "base/NumberFormat.h"

namespace kelvara::survey {

std::string Decimals(double value, int decimals) {
  std::array<char, 400> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::fixed, decimals);
  std::string result(text.data(), end);
  if (result.starts_with('-') && result.find_first_not_of("-0.") == std::string::npos) {
    result.erase(0, 1);
  }
  return result;
}

std::string Significant(double value, int digits) {
  std::array<char, 40> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::general, digits);
  return {text.data(), end};
}

std::string RpnText(std::int16_t rpn) { return base::FormatTwoDigits(rpn); }

std::string RangeText(std::int64_t low, std::int64_t high) {
  return low == high ? std::to_string(low) : std::to_string(low) + " to " + std::to_string(high);
}

}  // namespace kelvara::survey
