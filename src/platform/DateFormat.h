#pragma once

#include <string>

#include "platform/DateTime.h"

namespace kelvara::platform {

/// Formats dates as the system does, in its 8-bit character set.
class DateFormat {
 public:
  virtual ~DateFormat() = default;

  /// The short date.
  virtual std::string ShortDate(DateTime wallTime) const = 0;

  /// The general form: the short date, a blank, and the time with seconds but without a time zone.
  virtual std::string General(DateTime wallTime) const = 0;
};

}  // namespace kelvara::platform
