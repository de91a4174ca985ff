#pragma once

#include <QLocale>
#include <QString>
#include <cstdint>
#include <string>

#include "platform/DateFormat.h"

namespace kelvara::qt {

/// Formats dates as the user's locale does. A locale that has no customary formats uses yyyy-MM-dd
/// and HH:mm:ss.
class QtDateFormat : public platform::DateFormat {
 public:
  explicit QtDateFormat(const QLocale& locale = QLocale::system());

  std::string ShortDate(platform::DateTime wallTime) const override;
  std::string General(platform::DateTime wallTime) const override;

 private:
  QLocale locale_;
  QString dateFormat_;
  QString timeFormat_;
  // Cached, because a busy log formats the same second many times.
  mutable std::int64_t generalSecond_ = -1;
  mutable std::string general_;
};

}  // namespace kelvara::qt
