#include "platform/PortSettings.h"

#include <charconv>
#include <system_error>

#include "base/Fault.h"

namespace kelvara::platform {
namespace {

/// The only line format in use: no parity, 8 data bits, 1 stop bit.
constexpr std::string_view kLineFormat = ",n,8,1";

}  // namespace

std::string PortSettings(std::int32_t rate) {
  std::string settings = std::to_string(rate);
  settings += kLineFormat;
  return settings;
}

std::int32_t ReadRate(std::string_view settings) {
  std::int32_t rate = 0;
  if (settings.ends_with(kLineFormat)) {
    const char* const formatStart = settings.data() + settings.size() - kLineFormat.size();
    const auto [end, error] = std::from_chars(settings.data(), formatStart, rate);
    if (error != std::errc() || end != formatStart) {
      rate = 0;
    }
  }
  if (rate <= 0) {
    throw base::Fault(base::FaultKind::Port,
                      "a serial port cannot take the settings \"" + std::string(settings) + "\"");
  }
  return rate;
}

}  // namespace kelvara::platform
