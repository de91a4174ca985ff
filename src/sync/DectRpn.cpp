#include "sync/DectRpn.h"

#include "base/CheckedInteger.h"
#include "base/Rounding.h"

namespace kelvara::sync {
namespace {

constexpr std::int16_t kPortsPerRpn = 6;
constexpr std::int16_t kFirstPort = 600;
constexpr std::int16_t kWrapPort = 984;
constexpr std::int16_t kFirstWrappedPort = 200;

}  // namespace

void DectRpn::SetPortNum(std::int16_t portNum) {
  const std::int16_t offset =
      portNum >= kFirstPort
          ? base::Subtract16(portNum, kFirstPort)
          : base::Add16(base::Subtract16(portNum, kFirstWrappedPort), kWrapPort - kFirstPort);
  iRpn_ = base::Round16(static_cast<double>(offset) / kPortsPerRpn);
}

std::int16_t DectRpn::iPortNum() const {
  const std::int16_t port = base::Add16(base::Multiply16(iRpn_, kPortsPerRpn), kFirstPort);
  return port >= kWrapPort ? base::Add16(base::Subtract16(port, kWrapPort), kFirstWrappedPort)
                           : port;
}

}  // namespace kelvara::sync
