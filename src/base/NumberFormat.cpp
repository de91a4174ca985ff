#include "base/NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/Fault.h"

namespace kelvara::base {
namespace {

constexpr int kSignificantDigits = 15;
constexpr int kFixedDecimals = 3;

/// A decimal number 0.DIGITS times ten to the power of `point`; zero has no digits.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;

  /// Rounds half away from zero to the first `count` digits and drops trailing zeros.
  void RoundToDigits(int count);
  void DropTrailingZeros() { digits.erase(digits.find_last_not_of('0') + 1); }
  bool IsZero() const { return digits.empty(); }
};

void Decimal::RoundToDigits(int count) {
  if (count >= static_cast<int>(digits.size())) {
    return;
  }
  if (count < 0) {
    digits.clear();
    return;
  }
  const auto kept = static_cast<std::size_t>(count);
  const bool up = digits[kept] >= '5';
  digits.resize(kept);
  if (up) {
    // Trailing nines carry; if all digits are nines, the number gains a digit.
    digits.erase(digits.find_last_not_of('9') + 1);
    if (digits.empty()) {
      digits.assign(1, '1');
      ++point;
    } else {
      ++digits.back();
    }
  }
  DropTrailingZeros();
}

/// The shortest digits that read back as the same double, rounded to 15.
Decimal ToDecimal(double value) {
  if (!std::isfinite(value)) {
    throw Fault(FaultKind::Overflow, "Overflow");
  }
  std::array<char, 32> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                     std::chars_format::scientific);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
  const std::size_t exponentSign = text.find('e') + 1;
  int exponent = 0;
  std::from_chars(text.data() + exponentSign + 1, text.data() + text.size(), exponent);

  Decimal decimal;
  decimal.negative = value < 0.0;
  for (const char character : text.substr(0, exponentSign - 1)) {
    if (character != '.') {
      decimal.digits.push_back(character);
    }
  }
  decimal.point = (text[exponentSign] == '-' ? -exponent : exponent) + 1;
  decimal.DropTrailingZeros();
  decimal.RoundToDigits(kSignificantDigits);
  return decimal;
}

/// The digits before and after the decimal point; at least "0" before it.
std::pair<std::string, std::string> Split(const Decimal& decimal) {
  if (decimal.IsZero()) {
    return {"0", ""};
  }
  const auto digitCount = static_cast<int>(decimal.digits.size());
  if (decimal.point <= 0) {
    return {"0", std::string(static_cast<std::size_t>(-decimal.point), '0') + decimal.digits};
  }
  if (decimal.point >= digitCount) {
    return {decimal.digits + std::string(static_cast<std::size_t>(decimal.point - digitCount), '0'),
            ""};
  }
  const auto point = static_cast<std::size_t>(decimal.point);
  return {decimal.digits.substr(0, point), decimal.digits.substr(point)};
}

std::string_view SignOf(const Decimal& decimal) {
  return decimal.negative && !decimal.IsZero() ? "-" : "";
}

}  // namespace

std::string FormatGeneral(double value) {
  const Decimal decimal = ToDecimal(value);
  const auto [whole, fraction] = Split(decimal);
  std::string text(SignOf(decimal));
  text += whole;
  if (!fraction.empty()) {
    text += '.';
    text += fraction;
  }
  return text;
}

std::string FormatFixed(double value) {
  Decimal decimal = ToDecimal(value);
  decimal.RoundToDigits(decimal.point + kFixedDecimals);
  auto [whole, fraction] = Split(decimal);
  fraction.resize(kFixedDecimals, '0');
  std::string text(SignOf(decimal));
  text += whole;
  text += '.';
  text += fraction;
  return text;
}

std::string FormatTwoDigits(std::int32_t value) {
  std::string digits = std::to_string(std::abs(std::int64_t{value}));
  if (digits.size() < 2) {
    digits.insert(0, 1, '0');
  }
  if (value < 0) {
    digits.insert(0, 1, '-');
  }
  return digits;
}

}  // namespace kelvara::base
