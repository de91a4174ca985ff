#pragma once

#include <QLocale>

namespace kelvara::qt {

/// Whether a locale has date formats that people use. On POSIX systems the C locale has none.
bool HasDateFormats(const QLocale& locale);

}  // namespace kelvara::qt
