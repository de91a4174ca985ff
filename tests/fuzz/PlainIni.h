#pragma once

#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

/// The rules of a settings file said a second time, plainly and slowly. It shares nothing with the
/// program.
namespace kelvara::test {

/// The values of a settings file by section and key, both in lower case.
using PlainSettings = std::map<std::pair<std::string, std::string>, std::string>;

inline std::string PlainLower(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') {
      character = static_cast<char>(character + ('a' - 'A'));
    }
  }
  return text;
}

inline std::string PlainTrimmed(std::string text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
    text.erase(0, 1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
    text.pop_back();
  }
  return text;
}

inline bool PlainIsControl(char character) {
  return (character >= '\0' && character < ' ') || character == '\x7F';
}

/// A value without the quotes that may stand around it, and with its bytes for the escapes in them.
inline std::string PlainValue(const std::string& text) {
  if (text.size() < 2 || text.front() != '"' || text.back() != '"') {
    return text;
  }
  const std::string digits = "0123456789abcdef";
  std::string value;
  for (std::size_t place = 1; place < text.size() - 1; ++place) {
    if (place + 4 < text.size() && text[place] == '\\' && text[place + 1] == 'x') {
      const std::size_t high = digits.find(PlainLower(text.substr(place + 2, 1)));
      const std::size_t low = digits.find(PlainLower(text.substr(place + 3, 1)));
      if (high != std::string::npos && low != std::string::npos) {
        value += static_cast<char>(high * 16 + low);
        place += 3;
        continue;
      }
    }
    value += text[place];
  }
  return value;
}

/// What a file's text holds; nothing when it is no settings file.
inline std::optional<PlainSettings> ReadIniPlainly(std::string text) {
  while (text.starts_with("\xEF\xBB\xBF")) {
    text.erase(0, 3);
  }
  PlainSettings settings;
  std::optional<std::string> section;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    for (const char character : line) {
      if (character != '\t' && PlainIsControl(character)) {
        return std::nullopt;
      }
    }
    line = PlainTrimmed(line);
    if (line.empty() || line[0] == ';' || line[0] == '#') {
      continue;
    }
    if (line[0] == '[') {
      if (line.size() < 2 || line.back() != ']') {
        return std::nullopt;
      }
      section = PlainLower(PlainTrimmed(line.substr(1, line.size() - 2)));
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == 0 || equals == std::string::npos) {
      return std::nullopt;
    }
    if (section) {
      settings[{*section, PlainLower(PlainTrimmed(line.substr(0, equals)))}] =
          PlainValue(PlainTrimmed(line.substr(equals + 1)));
    }
  }
  return settings;
}

/// Whether a section or key can stand in a file; `forbidden` is the character that would end it.
inline bool PlainIsName(const std::string& name, char forbidden) {
  if (name.empty() || PlainTrimmed(name) != name || name.find(forbidden) != std::string::npos ||
      name[0] == ';' || name[0] == '#' || name[0] == '[') {
    return false;
  }
  for (const char character : name) {
    if (PlainIsControl(character)) {
      return false;
    }
  }
  return true;
}

}  // namespace kelvara::test
