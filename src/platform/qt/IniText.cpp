#include "platform/qt/IniText.h"

#include <algorithm>
#include <charconv>

#include "platform/qt/Trimmed.h"

namespace kelvara::qt {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kEscape = "\\x";
constexpr std::size_t kEscapeSize = 4;

bool IsControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20U || byte == 0x7FU;
}

/// Whether two names are equal, ignoring letter case.
bool IsSame(std::string_view left, std::string_view right) {
  const auto lower = [](char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  };
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [&](char one, char other) { return lower(one) == lower(other); });
}

bool IsComment(std::string_view line) {
  const std::string_view text = Trimmed(line);
  return text.empty() || text.front() == ';' || text.front() == '#';
}

std::optional<std::string_view> SectionOf(std::string_view line) {
  const std::string_view text = Trimmed(line);
  if (text.size() < 2 || text.front() != '[' || text.back() != ']') {
    return std::nullopt;
  }
  return Trimmed(text.substr(1, text.size() - 2));
}

std::optional<std::string_view> KeyOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  const std::string_view key = Trimmed(line.substr(0, equals));
  if (equals == std::string_view::npos || IsComment(key) || key.front() == '[') {
    return std::nullopt;
  }
  return key;
}

bool IsLine(std::string_view line) {
  return (IsComment(line) || SectionOf(line) || KeyOf(line)) &&
         std::none_of(line.begin(), line.end(),
                      [](char character) { return IsControl(character) && character != '\t'; });
}

/// The byte that an escape at the start of the text represents; nothing if there is no escape.
std::optional<char> Escaped(std::string_view text) {
  if (text.size() < kEscapeSize || !text.starts_with(kEscape)) {
    return std::nullopt;
  }
  const char* first = text.data() + kEscape.size();
  const char* last = text.data() + kEscapeSize;
  unsigned byte = 0;
  if (std::from_chars(first, last, byte, 16).ptr != last) {
    return std::nullopt;
  }
  return static_cast<char>(byte);
}

std::string Escape(char character) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(character);
  std::string text(kEscape);
  text += kDigits[byte >> 4U];
  text += kDigits[byte & 0xFU];
  return text;
}

bool IsQuoted(std::string_view text) {
  return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

std::string Written(std::string_view value) {
  if (Trimmed(value).size() == value.size() && !IsQuoted(value) &&
      std::none_of(value.begin(), value.end(), IsControl)) {
    return std::string(value);
  }
  std::string text = "\"";
  for (const char character : value) {
    text +=
        IsControl(character) || character == '\\' ? Escape(character) : std::string(1, character);
  }
  return text + '"';
}

std::string Read(std::string_view text) {
  if (!IsQuoted(text)) {
    return std::string(text);
  }
  text = text.substr(1, text.size() - 2);
  std::string value;
  while (!text.empty()) {
    const std::optional<char> escaped = Escaped(text);
    value += escaped.value_or(text.front());
    text.remove_prefix(escaped ? kEscapeSize : 1);
  }
  return value;
}

}  // namespace

std::optional<IniText> IniText::Parse(std::string_view text) {
  // All of them are removed: a second mark would become the first in the written file.
  while (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
  }
  IniText parsed;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    if (!IsLine(line)) {
      return std::nullopt;
    }
    parsed.lines_.emplace_back(line);
  }
  return parsed;
}

IniText::Place IniText::Find(std::string_view section, std::string_view key) const {
  Place place;
  bool inSection = false;
  for (std::size_t index = 0; index < lines_.size(); ++index) {
    const std::string_view line = lines_[index];
    if (const std::optional<std::string_view> name = SectionOf(line)) {
      inSection = IsSame(*name, section);
    }
    if (inSection && !Trimmed(line).empty()) {
      place.sectionEnd = index;
      if (const std::optional<std::string_view> name = KeyOf(line); name && IsSame(*name, key)) {
        place.line = index;
      }
    }
  }
  return place;
}

std::optional<std::string> IniText::Value(std::string_view section, std::string_view key) const {
  const Place place = Find(section, key);
  if (!place.line) {
    return std::nullopt;
  }
  const std::string_view line = lines_[*place.line];
  return Read(Trimmed(line.substr(line.find('=') + 1)));
}

void IniText::SetValue(std::string_view section, std::string_view key, std::string_view value) {
  std::string line(key);
  line += '=';
  line += Written(value);
  const Place place = Find(section, key);
  if (place.line) {
    lines_[*place.line] = line;
    return;
  }
  if (place.sectionEnd) {
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(*place.sectionEnd) + 1, line);
    return;
  }
  if (!lines_.empty() && !Trimmed(lines_.back()).empty()) {
    lines_.emplace_back();
  }
  std::string& heading = lines_.emplace_back("[");
  heading += section;
  heading += ']';
  lines_.push_back(line);
}

std::string IniText::Text() const {
  std::string text;
  for (const std::string& line : lines_) {
    text += line;
    text += '\n';
  }
  return text;
}

}  // namespace kelvara::qt
