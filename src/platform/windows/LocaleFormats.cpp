#include "platform/qt/LocaleFormats.h"

namespace kelvara::qt {

// The user may have chosen any format, also one that equals that of the C locale.
bool HasDateFormats(const QLocale& locale) { return locale.language() != QLocale::C; }

}  // namespace kelvara::qt
