#include "ports/PortDevice.h"

#include <QFile>
#include <QFileInfo>

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

std::string HeldElsewhereReason(const std::string& holder) {
  std::string reason = "in use by another program";
  if (!holder.empty()) {
    reason += " (";
    reason += holder;
    reason += ")";
  }
  return reason;
}

std::string LockLeftReason(const std::string& lockFile) {
  std::string reason = "in the way is the lock file \"";
  reason += lockFile;
  reason += "\", left behind by a program that is gone; remove it";
  return reason;
}

std::string ReasonOf(PortState state, const std::string& device, const std::string& detail) {
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
      return HeldElsewhereReason(detail);
    case PortState::LockLeft:
      return LockLeftReason(detail);
    case PortState::Dead:
      break;
  }
  return "no serial hardware answers behind it";
}

/// What the user can do about a device that cannot be opened; empty if the reason already says so.
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
    case PortState::LockLeft:
    case PortState::Free:
    case PortState::HeldHere:
      break;
  }
  return {};
}

}  // namespace

PortFinding FindingOf(PortState state, const std::string& device, const std::string& detail) {
  return {state, ReasonOf(state, device, detail)};
}

std::string PortFinding::Description() const {
  if (state == PortState::Free) {
    return "ready to be opened.";
  }
  if (state == PortState::HeldHere) {
    return "open now, in this program.";
  }
  const std::string advice = Advice(state);
  return advice.empty() ? reason + "." : reason + ". " + advice;
}

}  // namespace kelvara::ports
