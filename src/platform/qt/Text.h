#pragma once

#include <QString>
#include <string>
#include <string_view>

/// The windows' edge: the program's 8-bit text to Qt's and back, in the machine's character set.
namespace kelvara::qt {

/// Text that is only shown. Bytes that are none in the machine's character set are replacement
/// characters there.
inline QString ToQString(std::string_view text) {
  return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size()));
}

/// Text of a field, which `ToText` gives back byte for byte: a file's name need not be text in the
/// machine's character set. Each byte that is none is one unpaired low surrogate, U+DC00 above the
/// byte, which no valid text holds.
QString ToFieldText(std::string_view text);

/// What Qt's text is in the machine's character set, with the bytes that `ToFieldText` has kept.
std::string ToText(const QString& text);

}  // namespace kelvara::qt
