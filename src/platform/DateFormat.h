#pragma once

#include <string>

#include "platform/DateTime.h"

namespace kelvara::platform {

/// The system's forms of a date, in its 8-bit character set.
class DateFormat {
 public:
  virtual ~DateFormat() = default;

  /// The short date.
  virtual std::string ShortDate(DateTime wallTime) const = 0;

  /// The general form: short date, a blank, the time with seconds and without a time zone.
  virtual std::string General(DateTime wallTime) const = 0;
};

}  // namespace kelvara::platform
