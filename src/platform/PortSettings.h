#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kelvara::platform {

/// The rate of a beltpack's line, in baud, where no other was chosen.
inline constexpr std::int32_t kUsualRate = 19200;

/// How many received characters wait in a port at most. More are lost, the newest first.
inline constexpr std::size_t kInputBufferBytes = 1024;

/// The port's settings text: the rate, no parity, 8 data bits, 1 stop bit.
std::string PortSettings(std::int32_t rate);

/// The rate in a port's settings text, at least 1. A text of another form is a port fault.
std::int32_t ReadRate(std::string_view settings);

}  // namespace kelvara::platform
