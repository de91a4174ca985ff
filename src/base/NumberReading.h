#pragma once

#include <string_view>

namespace kelvara::base {

/// A blank is this character alone; tabs and line ends are not blanks.
inline constexpr char kBlank = ' ';

/// Which blanks the lenient reading passes over.
enum class Blanks {
  Leading,   ///< Those in front of the number only.
  Anywhere,  ///< All of them, between digits too.
};

/// The lenient reading: the number that the text begins with, made of an optional sign, digits and
/// one full stop (".5" and "5." too). Reading stops at the first character that cannot continue the
/// number; an empty or non-numeric text gives 0. A number too large for a double is an overflow
/// fault.
double ReadLeadingNumber(std::string_view text, Blanks blanks);

/// The strict conversion: the whole text must be a number as above, with an optional exponent and
/// blanks at both ends. Anything else ("inf", hexadecimal, grouping, a comma, an empty text) is a
/// not-a-number fault, a number too large for a double an overflow fault.
double ReadWholeNumber(std::string_view text);

/// The text without blanks at either end.
std::string_view TrimBlanks(std::string_view text);

}  // namespace kelvara::base
