#include "platform/windows/EscapedText.h"

#include <algorithm>
#include <charconv>

#include "platform/qt/Text.h"

namespace kelvara::windows {
namespace {

constexpr char kEscape = '?';
constexpr std::size_t kDigits = 4;

bool IsDigit(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F');
}

template <typename Text>
bool StartsWithDigits(const Text& text) {
  return text.size() >= static_cast<decltype(text.size())>(kDigits) &&
         std::all_of(text.begin(), text.begin() + kDigits,
                     [](auto character) { return IsDigit(QChar(character).unicode()); });
}

bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80U; }

/// Whether a character converts to the machine's character set and back, into bytes that no search
/// for an ASCII character would find.
bool IsInCharacterSet(QStringView character, const std::string& bytes) {
  return qt::ToQString(bytes) == character &&
         (character.front().unicode() < 0x80 || std::none_of(bytes.begin(), bytes.end(), IsAscii));
}

void AppendEscape(std::string& bytes, QChar unit) {
  bytes += kEscape;
  bytes +=
      QString::number(unit.unicode(), 16).rightJustified(kDigits, u'0').toUpper().toStdString();
}

}  // namespace

std::string Escaped(const QString& text) {
  std::string bytes;
  QStringView rest(text);
  while (!rest.empty()) {
    const bool isPair = rest.size() > 1 && rest[0].isHighSurrogate() && rest[1].isLowSurrogate();
    const QStringView character = rest.first(isPair ? 2 : 1);
    rest = rest.sliced(character.size());
    const std::string local = character.toLocal8Bit().toStdString();
    const bool isEscape = character.front() == QLatin1Char(kEscape) && StartsWithDigits(rest);
    if (!isEscape && IsInCharacterSet(character, local)) {
      bytes += local;
      continue;
    }
    for (const QChar unit : character) {
      AppendEscape(bytes, unit);
    }
  }
  return bytes;
}

QString Unescaped(std::string_view text) {
  QString whole;
  std::size_t plain = 0;
  for (std::size_t place = text.find(kEscape); place != std::string_view::npos;
       place = text.find(kEscape, place)) {
    const std::string_view digits = text.substr(++place);
    if (!StartsWithDigits(digits)) {
      continue;
    }
    std::uint16_t unit = 0;
    std::from_chars(digits.data(), digits.data() + kDigits, unit, 16);
    whole += qt::ToQString(text.substr(plain, place - 1 - plain));
    whole += QChar(unit);
    place += kDigits;
    plain = place;
  }
  return whole + qt::ToQString(text.substr(plain));
}

}  // namespace kelvara::windows
