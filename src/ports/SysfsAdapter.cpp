#include "ports/SysfsAdapter.h"

#include <algorithm>
#include <fstream>

#include "platform/qt/Trimmed.h"
#include "ports/AdapterName.h"
#include "ports/PortDevice.h"

namespace kelvara::ports {
namespace {

namespace fs = std::filesystem;

/// The first line of a file without surrounding blanks; empty if the file cannot be read.
std::string LineOf(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  // The text comes from the device, and is printed on a terminal.
  std::replace_if(
      line.begin(), line.end(),
      [](char character) { return static_cast<unsigned char>(character) < ' '; }, ' ');
  return std::string(qt::Trimmed(line));
}

std::string UsbName(const fs::path& usbDevice) {
  const std::string maker = LineOf(usbDevice / "manufacturer");
  std::string product = LineOf(usbDevice / "product");
  if (maker.empty() || product.starts_with(maker)) {
    return product;
  }
  return product.empty() ? maker : maker + " " + product;
}

/// The driver of a node of the tree; empty if it has none, or only the kernel's layer between a
/// driver and its ports.
std::string DriverOf(const fs::path& node) {
  std::error_code error;
  const fs::path driver = fs::canonical(node / "driver", error);
  const bool isHardware = !error && driver.parent_path().parent_path().filename() != "serial-base";
  return isHardware ? driver.filename().string() : std::string();
}

}  // namespace

std::string SysfsAdapterName(const fs::path& root, const std::string& device) {
  const fs::path path(device);
  std::error_code error;
  const fs::path top = fs::canonical(root, error);
  const fs::path port = top / "class/tty" / path.filename();
  fs::path node = fs::canonical(port / "device", error);
  // The kernel counts built-in ports that the machine lacks too; these are of type 0.
  if (error || path.parent_path() != "/dev" || LineOf(port / "type") == "0") {
    return {};
  }
  std::string driver;
  for (; node != top && node != node.root_path(); node = node.parent_path()) {
    if (fs::exists(node / "idVendor", error)) {
      return UsbName(node);
    }
    if (driver.empty()) {
      driver = DriverOf(node);
    }
  }
  return driver.empty() ? driver : "built-in port, driver " + driver;
}

std::string AdapterName(const std::string& device) {
  return SysfsAdapterName("/sys", FollowLinks(device));
}

}  // namespace kelvara::ports
