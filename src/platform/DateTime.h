#pragma once

namespace kelvara::platform {

/// A date-time in days; the fraction is the time of day. Day 0 is 1 January 1970.
using DateTime = double;

inline constexpr double kSecondsPerDay = 86400.0;

/// Converts seconds to days.
constexpr DateTime Span(double seconds) { return seconds / kSecondsPerDay; }

}  // namespace kelvara::platform
