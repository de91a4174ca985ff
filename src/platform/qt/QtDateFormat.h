#pragma once

#include <QLocale>
#include <QString>
#include <cstdint>
#include <string>

#include "platform/DateFormat.h"

namespace kelvara::qt {

/// Dates as the user's locale prints them; in the C locale, which has no habit of its own,
/// yyyy-MM-dd and HH:mm:ss.
class QtDateFormat : public platform::DateFormat {
 public:
  explicit QtDateFormat(const QLocale& locale = QLocale::system());

  std::string ShortDate(platform::DateTime wallTime) const override;
  std::string General(platform::DateTime wallTime) const override;

 private:
  QLocale locale_;
  QString dateFormat_;
  QString timeFormat_;
  // A busy log asks for the same second many times over.
  mutable std::int64_t generalSecond_ = -1;
  mutable std::string general_;
};

}  // namespace kelvara::qt
