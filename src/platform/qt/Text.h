#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kelvara::qt {

/// The windows' edge: the program's 8-bit text to Qt's and back, in the machine's character set.
inline QString ToQString(std::string_view text) {
  return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string ToText(const QString& text) { return text.toLocal8Bit().toStdString(); }

}  // namespace kelvara::qt
