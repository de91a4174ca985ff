#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/SettingsStore.h"

namespace kelvara::ports {

/// A device assigned to a port number.
struct PortAssignment {
  int port = 0;
  std::string device;
};

/// Reads "N=DEVICE", with N from 1 to 12. Any other text is a port fault that says why.
PortAssignment ReadPortAssignment(std::string_view text);

/// What is wrong with a text as "N=DEVICE"; empty if nothing is.
std::string PortAssignmentFault(const std::string& text);

/// The devices of the ports COM1 to COM12. The first of these applies: the device assigned for this
/// run; the device in the settings' section "Ports" under "COM1" to "COM12"; the default. By
/// default COM1 to COM4 are the USB serial adapters ttyUSB0 to ttyUSB3, COM5 to COM8 the devices
/// ttyACM0 to ttyACM3, and COM9 to COM12 the built-in ports ttyS0 to ttyS3. On Windows the default
/// is the port of that name.
///
/// The default follows the adapters' own numbers, whether they are plugged in or not. If only those
/// present were counted, unplugging one could make a remembered port mean another adapter, with
/// another device on its line. To keep an adapter under one number whatever the order of plugging,
/// assign its stable name (/dev/serial/by-id/...).
class PortTable {
 public:
  /// `settings` is the section "Ports". It must exist as long as the table and is read at each
  /// lookup.
  explicit PortTable(const platform::SettingsStore& settings) : settings_(settings) {}

  /// Assigns a device to a port for this run. A port outside 1 to 12 is a port fault.
  void Assign(const PortAssignment& assignment);

  /// The device of a port, present or not. A relative name is looked up in the current folder, or
  /// else taken to be in /dev. A port outside 1 to 12 is a port fault.
  std::string DeviceOf(int port) const;

 private:
  const platform::SettingsStore& settings_;
  std::map<int, std::string> assigned_;
};

}  // namespace kelvara::ports
