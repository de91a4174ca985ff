#pragma once

#include <cstdint>
#include <string>

namespace kelvara::cli {

/// The checks of options that are numbers: an empty text when the value will do, else what is wrong
/// with it. This one takes plain decimal digits, from `least` to `most`.
std::string CheckWholeNumber(const std::string& text, std::uint64_t least, std::uint64_t most);

/// Takes a decimal number above 0 and up to `most`.
std::string CheckPositiveNumber(const std::string& text, double most);

}  // namespace kelvara::cli
