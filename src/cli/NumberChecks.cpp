#include "cli/NumberChecks.h"

#include <charconv>
#include <system_error>

#include "base/Fault.h"
#include "base/NumberFormat.h"
#include "base/NumberReading.h"
#include "cli/Quoted.h"

namespace kelvara::cli {

std::string CheckWholeNumber(const std::string& text, int most) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  // With a zero in front the option parser would take it for a number of another base.
  const bool isPlain = error == std::errc() && end == text.data() + text.size() && text[0] != '0';
  if (isPlain && value >= 1 && value <= most) {
    return {};
  }
  return Quoted(text) + " is no whole number from 1 to " + std::to_string(most);
}

std::string CheckPositiveNumber(const std::string& text, double most) {
  try {
    const double value = base::ReadWholeNumber(text);
    if (value > 0.0 && value <= most) {
      return {};
    }
  } catch (const base::Fault&) {
    // Told below, with those that are out of range.
  }
  return Quoted(text) + " is no number above 0 and up to " + base::FormatGeneral(most);
}

}  // namespace kelvara::cli
