#include "platform/qt/Text.h"

#include <algorithm>

namespace kelvara::qt {
namespace {

constexpr char16_t kKeptByte = 0xDC00;
/// The most bytes that one character may have.
constexpr std::size_t kLongestCharacter = 4;

bool IsKeptByte(const QString& text, qsizetype position) {
  const char16_t unit = text[position].unicode();
  const bool isPaired = position > 0 && text[position - 1].isHighSurrogate();
  return unit >= kKeptByte + 0x80 && unit <= kKeptByte + 0xFF && !isPaired;
}

/// The first character of a text and its length in bytes. A byte that starts no character is kept.
std::pair<QString, std::size_t> FirstCharacter(std::string_view text) {
  for (std::size_t size = 1; size <= std::min(kLongestCharacter, text.size()); ++size) {
    const std::string_view bytes = text.substr(0, size);
    if (QString character = ToQString(bytes); ToText(character) == bytes) {
      return {character, size};
    }
  }
  const auto byte = static_cast<unsigned char>(text.front());
  return {QString(QChar(static_cast<char16_t>(kKeptByte + byte))), 1};
}

}  // namespace

QString ToFieldText(std::string_view text) {
  QString whole = ToQString(text);
  if (ToText(whole) == text) {
    return whole;
  }
  whole.clear();
  while (!text.empty()) {
    const auto [character, size] = FirstCharacter(text);
    whole += character;
    text.remove_prefix(size);
  }
  return whole;
}

std::string ToText(const QString& text) {
  QByteArray bytes;
  qsizetype begin = 0;
  for (qsizetype position = 0; position < text.size(); ++position) {
    if (IsKeptByte(text, position)) {
      bytes += QStringView(text).mid(begin, position - begin).toLocal8Bit();
      bytes += static_cast<char>(text[position].unicode() - kKeptByte);
      begin = position + 1;
    }
  }
  bytes += QStringView(text).mid(begin).toLocal8Bit();
  return bytes.toStdString();
}

}  // namespace kelvara::qt
