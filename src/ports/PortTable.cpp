#include "ports/PortTable.h"

#include <charconv>

#include "base/Fault.h"
#include "platform/SerialPort.h"
#include "platform/qt/Trimmed.h"
#include "ports/PortNames.h"

namespace kelvara::ports {
namespace {

void ExpectPort(int port) {
  if (port < 1 || port > platform::kLastComPort) {
    throw base::Fault(base::FaultKind::Port, "there is no port COM" + std::to_string(port) +
                                                 "; the ports are COM1 to COM" +
                                                 std::to_string(platform::kLastComPort));
  }
}

[[noreturn]] void Refuse(std::string_view text, const char* reason) {
  std::string message = "\"";
  message += text;
  message += "\" is not N=DEVICE: ";
  message += reason;
  throw base::Fault(base::FaultKind::Port, message);
}

}  // namespace

PortAssignment ReadPortAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) {
    Refuse(text, "it has no \"=\"");
  }
  const std::string_view number = qt::Trimmed(text.substr(0, equals));
  PortAssignment assignment;
  const auto [end, error] =
      std::from_chars(number.data(), number.data() + number.size(), assignment.port);
  if (error != std::errc() || end != number.data() + number.size() || assignment.port < 1 ||
      assignment.port > platform::kLastComPort) {
    Refuse(text, "N is a number from 1 to 12");
  }
  assignment.device = qt::Trimmed(text.substr(equals + 1));
  if (assignment.device.empty()) {
    Refuse(text, "no device is named");
  }
  return assignment;
}

std::string PortAssignmentFault(const std::string& text) {
  try {
    ReadPortAssignment(text);
    return {};
  } catch (const base::Fault& fault) {
    return fault.what();
  }
}

void PortTable::Assign(const PortAssignment& assignment) {
  ExpectPort(assignment.port);
  assigned_[assignment.port] = assignment.device;
}

std::string PortTable::DeviceOf(int port) const {
  ExpectPort(port);
  const auto assigned = assigned_.find(port);
  if (assigned != assigned_.end()) {
    return WholeName(assigned->second);
  }
  const std::string stored = settings_.Read("COM" + std::to_string(port), "");
  return stored.empty() ? DefaultDevice(port) : WholeName(stored);
}

}  // namespace kelvara::ports
