#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvara::platform {

/// The default rate of a beltpack's line, in baud.
inline constexpr std::int32_t kUsualRate = 19200;

/// The most received characters that wait in a port. When it is full, newer characters are lost.
inline constexpr std::size_t kInputBufferBytes = 1024;

/// The port's settings text: the rate, no parity, 8 data bits, 1 stop bit.
std::string PortSettings(std::int32_t rate);

/// Reads the rate, at least 1, from a port's settings text. Any other text is a port fault.
std::int32_t ReadRate(std::string_view settings);

}  // namespace kelvara::platform
