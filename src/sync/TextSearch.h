#pragma once

#include <cstddef>
#include <string_view>

namespace kelvara::sync {

/// The index of the first place at or after `start` where the text holds the word, whatever the
/// case of its ASCII letters; npos when there is none. The word is given in lower case and has at
/// least two characters.
std::size_t FindIgnoringCase(std::string_view text, std::string_view lowerCaseWord,
                             std::size_t start);

}  // namespace kelvara::sync
