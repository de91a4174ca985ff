#include "base/NumberReading.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>

#include "base/Fault.h"

namespace kelvara::base {
namespace {

/// A double holds every whole number of up to this many digits exactly.
constexpr std::size_t kExactDigits = 15;

constexpr std::int64_t kLargestExponent = std::int64_t{1} << 60U;

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

bool IsSign(char character) { return character == '+' || character == '-'; }

/// The length of the unsigned decimal number at the start of the text, without an exponent; 0 if it
/// has no digits.
std::size_t DecimalLength(std::string_view text) {
  std::size_t length = 0;
  bool hasDigit = false;
  bool hasPoint = false;
  while (length < text.size()) {
    if (IsDigit(text[length])) {
      hasDigit = true;
    } else if (text[length] == '.' && !hasPoint) {
      hasPoint = true;
    } else {
      break;
    }
    ++length;
  }
  return hasDigit ? length : 0;
}

/// The length of the exponent ("e", optional sign, digits) at the start of the text; 0 if there is
/// none.
std::size_t ExponentLength(std::string_view text) {
  if (text.empty() || (text[0] != 'e' && text[0] != 'E')) {
    return 0;
  }
  const std::size_t firstDigit = text.size() > 1 && IsSign(text[1]) ? 2 : 1;
  std::size_t length = firstDigit;
  while (length < text.size() && IsDigit(text[length])) {
    ++length;
  }
  return length > firstDigit ? length : 0;
}

/// Whether a number outside the range of a double is too small rather than too large. from_chars
/// only reports that it is out of range, so the position of the first nonzero digit decides.
bool IsTooSmall(std::string_view number) {
  const std::size_t exponentMark = number.find_first_of("eE");
  const std::string_view decimal = number.substr(0, exponentMark);
  const std::size_t firstDigit = decimal.find_first_not_of("0.");
  if (firstDigit == std::string_view::npos) {
    return true;
  }
  const std::size_t point = std::min(decimal.find('.'), decimal.size());
  std::int64_t exponent = 0;
  if (exponentMark != std::string_view::npos) {
    std::string_view text = number.substr(exponentMark + 1);
    const bool negative = text[0] == '-';
    if (IsSign(text[0])) {
      text.remove_prefix(1);
    }
    if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc()) {
      return negative;
    }
    // No text is long enough for its digits to outweigh a larger exponent.
    exponent = std::min(exponent, kLargestExponent);
    exponent = negative ? -exponent : exponent;
  }
  return static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit) + exponent < 0;
}

/// The value of an optionally signed number whose form has already been checked.
double ValueOf(std::string_view number) {
  const bool negative = number[0] == '-';
  if (IsSign(number[0])) {
    number.remove_prefix(1);
  }
  if (number.size() <= kExactDigits && std::all_of(number.begin(), number.end(), IsDigit)) {
    std::int64_t whole = 0;
    for (const char digit : number) {
      whole = whole * 10 + (digit - '0');
    }
    return static_cast<double>(negative ? -whole : whole);
  }
  double magnitude = 0.0;
  const auto [end, error] =
      std::from_chars(number.data(), number.data() + number.size(), magnitude);
  if (error == std::errc::result_out_of_range) {
    if (!IsTooSmall(number)) {
      throw Fault(FaultKind::Overflow, "Overflow");
    }
    magnitude = 0.0;
  }
  return negative ? -magnitude : magnitude;
}

}  // namespace

double ReadLeadingNumber(std::string_view text, Blanks blanks) {
  std::string withoutBlanks;
  if (blanks == Blanks::Anywhere && text.find(kBlank) != std::string_view::npos) {
    withoutBlanks = text;
    std::erase(withoutBlanks, kBlank);
    text = withoutBlanks;
  }
  while (!text.empty() && text[0] == kBlank) {
    text.remove_prefix(1);
  }
  const std::size_t signLength = !text.empty() && IsSign(text[0]) ? 1 : 0;
  const std::size_t length = DecimalLength(text.substr(signLength));
  return length == 0 ? 0.0 : ValueOf(text.substr(0, signLength + length));
}

double ReadWholeNumber(std::string_view text) {
  const std::string_view number = TrimBlanks(text);
  const std::size_t signLength = !number.empty() && IsSign(number[0]) ? 1 : 0;
  const std::size_t decimalLength = DecimalLength(number.substr(signLength));
  const std::size_t exponentLength = ExponentLength(number.substr(signLength + decimalLength));
  if (decimalLength == 0 || signLength + decimalLength + exponentLength != number.size()) {
    throw Fault(FaultKind::NotANumber, "Not a number: \"" + std::string(text) + "\"");
  }
  return ValueOf(number);
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == kBlank) {
    text.remove_prefix(1);
  }
  while (!text.empty() && text.back() == kBlank) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace kelvara::base
