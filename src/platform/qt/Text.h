#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Conversions between the program's 8-bit text and Qt's, in the machine's character set.
namespace kelvara::qt {

/// Converts text that is only shown. Bytes that are invalid in the machine's character set become
/// replacement characters.
inline QString ToQString(std::string_view text) {
  return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size()));
}

/// Converts text for an input field so that `ToText` restores it byte for byte: a file name need
/// not be valid in the machine's character set. Each invalid byte becomes one unpaired low
/// surrogate, U+DC00 plus the byte, which no valid text contains.
QString ToFieldText(std::string_view text);

/// Converts Qt's text to the machine's character set and restores the bytes that `ToFieldText`
/// kept.
std::string ToText(const QString& text);

}  // namespace kelvara::qt
