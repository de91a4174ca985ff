#pragma once

#include <cstdint>
#include <string>

namespace kelvara::sync {

/// The value in upper-case hexadecimal without a prefix, padded on the left with "0" up to `width`
/// characters. A negative value gives its four-digit two's complement; a longer text is never cut.
std::string HexPad(std::int16_t value, std::int16_t width);

}  // namespace kelvara::sync
