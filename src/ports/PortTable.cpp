#include "ports/PortTable.h"

#include <QFileInfo>
#include <array>
#include <charconv>

#include "base/Fault.h"
#include "platform/SerialPort.h"
#include "platform/qt/Trimmed.h"

namespace kelvara::ports {
namespace {

#ifdef Q_OS_WIN

std::string DefaultDevice(int port) { return "COM" + std::to_string(port); }

std::string WholeName(const std::string& device) { return device; }

#else

constexpr int kPortsOfAKind = 4;
constexpr std::array<const char*, 3> kKinds{"/dev/ttyUSB", "/dev/ttyACM", "/dev/ttyS"};
static_assert(kPortsOfAKind * kKinds.size() == platform::kLastComPort);

std::string DefaultDevice(int port) {
  const int index = port - 1;
  return kKinds.at(static_cast<std::size_t>(index / kPortsOfAKind)) +
         std::to_string(index % kPortsOfAKind);
}

std::string WholeName(const std::string& device) {
  if (device.starts_with('/')) {
    return device;
  }
  const QFileInfo here(QFile::decodeName(device.c_str()));
  return here.exists() ? QFile::encodeName(here.absoluteFilePath()).toStdString()
                       : "/dev/" + device;
}

#endif

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
#ifndef Q_OS_WIN
  const std::string stored = settings_.Read("COM" + std::to_string(port), "");
  if (!stored.empty()) {
    return WholeName(stored);
  }
#endif
  return DefaultDevice(port);
}

}  // namespace kelvara::ports
