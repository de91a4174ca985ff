#pragma once

#include <cstdint>
#include <string>

namespace kelvara::survey {

/// A number with so many decimals, independent of the language, and never "-0".
std::string Decimals(double value, int decimals);

/// A number with so many significant digits, also independent of the language.
std::string Significant(double value, int digits);

/// "02", as the grid shows RPNs in decimal.
std::string RpnText(std::int16_t rpn);

/// "3", or "3 to 4" if the value is not certain.
std::string RangeText(std::int64_t low, std::int64_t high);

}  // namespace kelvara::survey
