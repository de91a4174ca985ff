#pragma once

#include <string>

#include "sim/Random.h"

namespace kelvara::sim {

/// The text cut off somewhere: at least one character is left and at least one is missing, if the
/// text has two.
std::string CutShort(std::string text, Random& random);

/// The text with about one byte in twenty, at least one, replaced by another.
std::string Garbled(std::string text, Random& random);

/// The text without about a quarter of its line feeds, and at least one of them.
std::string WithoutSomeLineFeeds(const std::string& text, Random& random);

/// `count` bytes of any value.
std::string AnyBytes(std::size_t count, Random& random);

}  // namespace kelvara::sim
