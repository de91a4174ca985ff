#include "cli/NumberChecks.h"

#include <charconv>
#include <system_error>

#include "base/Fault.h"
#include "base/NumberFormat.h"
#include "base/NumberReading.h"
#include "cli/Quoted.h"

namespace kelvara::cli {

std::string CheckWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  // The option parser would read a number with a leading zero in another base.
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  const bool isPlain = isWhole && (text[0] != '0' || text == "0");
  if (isPlain && value >= least && value <= most) {
    return {};
  }
  return Quoted(text) + " is not a whole number from " + std::to_string(least) + " to " +
         std::to_string(most);
}

std::string CheckPositiveNumber(const std::string& text, double most) {
  try {
    const double value = base::ReadWholeNumber(text);
    if (value > 0.0 && value <= most) {
      return {};
    }
  } catch (const base::Fault&) {
    // Reported below, like a number out of range.
  }
  return Quoted(text) + " is not a number above 0 and up to " + base::FormatGeneral(most);
}

}  // namespace kelvara::cli
