#pragma once

#include <cstdint>
#include <string>

namespace kelvara::base {

/// The general form: the shortest digits that give the double back, then rounded half away from
/// zero to 15 significant digits; no exponent, no trailing zeros, never "-0". A value that is not
/// finite is an overflow fault.
std::string FormatGeneral(double value);

/// The fixed form "0.000": the value's 15-digit decimal rounded half away from zero to three
/// decimals, with at least one integer digit; never "-0.000". A value that is not finite is an
/// overflow fault.
std::string FormatFixed(double value);

/// The form "00": at least two decimal digits, a sign kept in front of them.
std::string FormatTwoDigits(std::int32_t value);

}  // namespace kelvara::base
