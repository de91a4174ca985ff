#pragma once

#include <string_view>

namespace kelvara::base {

/// Only this character is a blank; tabs and line ends are not.
inline constexpr char kBlank = ' ';

/// Which blanks the lenient reading skips.
enum class Blanks {
  Leading,   ///< Only those before the number.
  Anywhere,  ///< All of them, even between digits.
};

/// Reads leniently: returns the number at the start of the text, an optional sign followed by
/// digits and at most one decimal point (".5" and "5." are valid). Reading stops at the first
/// character that cannot continue the number; an empty or non-numeric text gives 0. A number too
/// large for a double is an overflow fault.
double ReadLeadingNumber(std::string_view text, Blanks blanks);

/// Reads strictly: the whole text must be a number as above, with an optional exponent and blanks
/// at both ends. Anything else ("inf", hexadecimal, grouping, a comma, an empty text) is a
/// not-a-number fault; a number too large for a double is an overflow fault.
double ReadWholeNumber(std::string_view text);

/// The text without blanks at either end.
std::string_view TrimBlanks(std::string_view text);

}  // namespace kelvara::base
