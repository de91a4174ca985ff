#include "ports/PortDescription.h"

#include "base/Fault.h"
#include "ports/PortProbe.h"

namespace kelvara::ports {
namespace {

constexpr const char* kOpenHere = "open now, in this program.";

/// What helps where a device cannot be opened.
std::string Advice(PortState state) {
  switch (state) {
    case PortState::Absent:
      return "Plug the adapter in, or choose another port.";
    case PortState::NotAPort:
    case PortState::Dead:
      return "Choose another port.";
    case PortState::NoPermission:
      return "Have the user given access, then log in again.";
    case PortState::HeldElsewhere:
      return "End the other program first.";
    case PortState::Free:
    case PortState::HeldHere:
      break;
  }
  return {};
}

}  // namespace

std::string DescribePort(const PortTable& ports, int port, const std::string& openDevice) {
  try {
    const std::string device = ports.DeviceOf(port);
    std::string text = device;
    text += ": ";
    if (!openDevice.empty() && FollowLinks(device) == FollowLinks(openDevice)) {
      return text + kOpenHere;
    }
    const PortFinding finding = ProbePort(device);
    if (finding.state == PortState::Free) {
      text += "ready to be opened.";
    } else if (finding.state == PortState::HeldHere) {
      text += kOpenHere;
    } else {
      text += finding.reason + ". " + Advice(finding.state);
    }
    return text;
  } catch (const base::Fault& fault) {
    return fault.what();
  }
}

}  // namespace kelvara::ports
