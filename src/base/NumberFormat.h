#pragma once

#include <cstdint>
#include <string>

namespace kelvara::base {

/// Formats in the general form: the shortest digits that read back as the same double, rounded half
/// away from zero to 15 significant digits, without an exponent or trailing zeros, and never "-0".
/// A value that is not finite is an overflow fault.
std::string FormatGeneral(double value);

/// Formats in the fixed form "0.000": the value's 15-digit decimal rounded half away from zero to
/// three decimals, with at least one integer digit, and never "-0.000". A value that is not finite
/// is an overflow fault.
std::string FormatFixed(double value);

/// Formats in the form "00": at least two decimal digits, after a minus sign if the value is
/// negative.
std::string FormatTwoDigits(std::int32_t value);

}  // namespace kelvara::base
