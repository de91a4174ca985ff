#include "ports/PortProbe.h"

#include <QFile>
#include <QFileInfo>

#include "ports/PortHolder.h"

namespace kelvara::ports {
namespace {

std::string NoPermissionReason(const std::string& device) {
  const QFileInfo info(QFile::decodeName(device.c_str()));
  std::string reason = "no permission";
  constexpr QFile::Permissions kGroupMay = QFile::ReadGroup | QFile::WriteGroup;
  if (!info.group().isEmpty() && (info.permissions() & kGroupMay) == kGroupMay) {
    reason += "; members of the group \"";
    reason += info.group().toStdString();
    reason += "\" have it";
  } else if (!info.owner().isEmpty()) {
    reason += "; only the user \"";
    reason += info.owner().toStdString();
    reason += "\" has it";
  }
  return reason;
}

std::string HeldElsewhereReason(const std::string& device) {
  std::string reason = "in use by another program";
  if (const std::optional<long> holder = HolderOf(device)) {
    reason += " (";
    reason += NameOfProcess(*holder);
    reason += ")";
  }
  return reason;
}

}  // namespace

PortFinding ProbePort(const std::string& device) {
  const std::string followed = FollowLinks(device);
  const PortState state = PortLock(followed).State();
  return {state, ReasonOf(state, followed)};
}

std::string ReasonOf(PortState state, const std::string& device) {
  switch (state) {
    case PortState::Free:
      return "";
    case PortState::Absent:
      return "there is no such device";
    case PortState::NotAPort:
      return "it is not a serial port";
    case PortState::NoPermission:
      return NoPermissionReason(device);
    case PortState::HeldHere:
      return "this program has it open";
    case PortState::HeldElsewhere:
      return HeldElsewhereReason(device);
    case PortState::Dead:
      break;
  }
  return "no serial hardware answers behind it";
}

}  // namespace kelvara::ports
