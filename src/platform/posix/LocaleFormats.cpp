#include "platform/qt/LocaleFormats.h"

namespace kelvara::qt {

// The locale of the language may be another one than that of the dates, so the formats are
// compared.
bool HasDateFormats(const QLocale& locale) {
  return locale.dateFormat(QLocale::ShortFormat) != QLocale::c().dateFormat(QLocale::ShortFormat);
}

}  // namespace kelvara::qt
