#pragma once

#include <cstdint>
#include <string>

namespace kelvara::cli {

/// Checks the text of a numeric option: empty if it is plain decimal digits with a value from
/// `least` to `most`, otherwise a message that says what is wrong.
std::string CheckWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most);

/// The same check for a decimal number above 0 and up to `most`.
std::string CheckPositiveNumber(const std::string& text, double most);

}  // namespace kelvara::cli
