#include <QFile>
#include <QFileInfo>
#include <array>

#include "platform/SerialPort.h"
#include "ports/PortNames.h"

namespace kelvara::ports {
namespace {

constexpr int kPortsOfAKind = 4;
constexpr std::array<const char*, 3> kKinds{"/dev/ttyUSB", "/dev/ttyACM", "/dev/ttyS"};
static_assert(kPortsOfAKind * kKinds.size() == platform::kLastComPort);

}  // namespace

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

}  // namespace kelvara::ports
