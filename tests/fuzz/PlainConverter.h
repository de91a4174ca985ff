#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

/// The rules of the converter said a second time, plainly and slowly, with the C library's own
/// reading and writing of numbers. It shares nothing with the program.
namespace kelvara::test {

enum class PlainFault { NotANumber, Overflow };

/// A number, or why there is none.
struct PlainNumber {
  double value = 0.0;
  std::optional<PlainFault> fault;
};

inline PlainNumber PlainValueOf(const std::string& digits) {
  const double value = std::strtod(digits.c_str(), nullptr);
  return std::isfinite(value) ? PlainNumber{value, {}} : PlainNumber{0.0, PlainFault::Overflow};
}

/// Takes the digits at a text's beginning over to a number; true when there were some.
inline bool PlainTakeDigits(std::string& text, std::string& number) {
  bool taken = false;
  for (; !text.empty() && text[0] >= '0' && text[0] <= '9'; text.erase(0, 1), taken = true) {
    number += text[0];
  }
  return taken;
}

/// Takes an optional sign and a decimal number over; true when there was one.
inline bool PlainTakeDecimal(std::string& text, std::string& number) {
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    number += text[0];
    text.erase(0, 1);
  }
  bool taken = PlainTakeDigits(text, number);
  if (!text.empty() && text[0] == '.') {
    std::string behind = ".";
    text.erase(0, 1);
    taken = PlainTakeDigits(text, behind) || taken;
    number += behind;
  }
  return taken;
}

/// The whole text as a number, with blanks around it and an exponent allowed.
inline PlainNumber PlainWholeNumber(std::string text) {
  while (!text.empty() && text.front() == ' ') {
    text.erase(0, 1);
  }
  while (!text.empty() && text.back() == ' ') {
    text.pop_back();
  }
  std::string number;
  if (!PlainTakeDecimal(text, number)) {
    return {0.0, PlainFault::NotANumber};
  }
  if (!text.empty() && (text[0] == 'e' || text[0] == 'E')) {
    number += 'e';
    text.erase(0, 1);
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
      number += text[0];
      text.erase(0, 1);
    }
    if (!PlainTakeDigits(text, number)) {
      return {0.0, PlainFault::NotANumber};
    }
  }
  return text.empty() ? PlainValueOf(number) : PlainNumber{0.0, PlainFault::NotANumber};
}

/// The number that the text begins with, blanks counting for nothing; 0 when there is none.
inline PlainNumber PlainLeadingNumber(std::string text) {
  std::erase(text, ' ');
  std::string number;
  return PlainTakeDecimal(text, number) ? PlainValueOf(number) : PlainNumber{};
}

/// The nearest whole number, a half going to the even one; nothing when 16 bits cannot hold it.
inline std::optional<int> PlainRound16(double value) {
  if (!(value > -40000.0 && value < 40000.0)) {
    return std::nullopt;
  }
  const double below = std::floor(value);
  const int whole = static_cast<int>(below);
  const double rest = value - below;
  const int rounded = rest > 0.5 || (rest == 0.5 && whole % 2 != 0) ? whole + 1 : whole;
  return rounded < -32768 || rounded > 32767 ? std::nullopt : std::optional(rounded);
}

/// The significant digits of a magnitude, the fewest that give it back and then 15 at the most, and
/// the power of ten that stands in front of them as in 0.DIGITS.
struct PlainDigits {
  std::string digits;
  int point = 0;
};

/// Keeps so many of the digits, a half going up.
inline void PlainKeep(PlainDigits& decimal, int count) {
  if (count < 0) {
    decimal.digits.clear();
  }
  while (static_cast<int>(decimal.digits.size()) > count && !decimal.digits.empty()) {
    const bool up =
        static_cast<int>(decimal.digits.size()) == count + 1 && decimal.digits.back() >= '5';
    decimal.digits.pop_back();
    if (!up) {
      continue;
    }
    decimal.digits.insert(0, 1, '0');
    ++decimal.point;
    std::size_t place = decimal.digits.size() - 1;
    for (; decimal.digits[place] == '9'; --place) {
      decimal.digits[place] = '0';
    }
    ++decimal.digits[place];
    if (decimal.digits[0] == '0') {
      decimal.digits.erase(0, 1);
      --decimal.point;
    }
    break;
  }
}

inline PlainDigits PlainDigitsOf(double magnitude) {
  char text[64];
  for (int decimals = 0; decimals <= 16; ++decimals) {
    std::snprintf(text, sizeof text, "%.*e", decimals, magnitude);
    if (std::strtod(text, nullptr) == magnitude) {
      break;
    }
  }
  PlainDigits decimal;
  const std::string written = text;
  const std::size_t exponentMark = written.find('e');
  for (const char character : written.substr(0, exponentMark)) {
    if (character != '.') {
      decimal.digits += character;
    }
  }
  decimal.point = std::atoi(written.c_str() + exponentMark + 1) + 1;
  PlainKeep(decimal, 15);
  return decimal;
}

/// A number as text: with as many decimals as it has when `decimals` is negative, else with so
/// many.
inline std::string PlainText(double value, int decimals) {
  PlainDigits decimal = PlainDigitsOf(std::fabs(value));
  if (decimals >= 0) {
    PlainKeep(decimal, decimal.point + decimals);
  }
  std::string digits = decimal.digits;
  int point = decimal.point;
  for (; point < 1; ++point) {
    digits.insert(0, 1, '0');
  }
  while (static_cast<int>(digits.size()) < point + (decimals < 0 ? 0 : decimals)) {
    digits += '0';
  }
  std::string text = digits.substr(0, static_cast<std::size_t>(point));
  std::string behind = digits.substr(static_cast<std::size_t>(point));
  while (decimals < 0 && !behind.empty() && behind.back() == '0') {
    behind.pop_back();
  }
  if (decimals >= 0) {
    behind.resize(static_cast<std::size_t>(decimals), '0');
  }
  text += behind.empty() ? "" : "." + behind;
  const bool isZero = text.find_first_not_of("0.") == std::string::npos;
  return value < 0.0 && !isZero ? "-" + text : text;
}

}  // namespace kelvara::test
