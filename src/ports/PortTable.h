#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/SettingsStore.h"

namespace kelvara::ports {

/// A device that a port number is to stand for.
struct PortAssignment {
  int port = 0;
  std::string device;
};

/// Reads "N=DEVICE", N from 1 to 12. A text that is no such thing is a port fault that says why.
PortAssignment ReadPortAssignment(std::string_view text);

/// What is wrong with a text as "N=DEVICE", or an empty text.
std::string PortAssignmentFault(const std::string& text);

/// Which device each of the ports COM1 to COM12 stands for. On Windows these are the ports
/// themselves. Elsewhere it is, in this order: what was assigned for this run; what the settings
/// hold in section "Ports" under "COM1" to "COM12"; or the default, COM1 to COM4 the USB serial
/// adapters ttyUSB0 to ttyUSB3, COM5 to COM8 the devices ttyACM0 to ttyACM3, COM9 to COM12 the
/// built-in ports ttyS0 to ttyS3.
///
/// The default goes by the adapters' own numbers, whether they are plugged in or not: counting
/// those that happen to be there would let the remembered port mean another adapter, with another
/// device at its end, as soon as one in front of it is pulled. Who wants one adapter under one
/// number whatever the order of plugging assigns its stable name (/dev/serial/by-id/...).
class PortTable {
 public:
  /// Over the settings' section of ports, which outlives the table and is read at each question.
  explicit PortTable(const platform::SettingsStore& settings) : settings_(settings) {}

  /// Lets a port stand for a device in this run.
  void Assign(const PortAssignment& assignment);

  /// The device that a port stands for, present or not. A name without a folder, or any other name
  /// that is relative, is looked for in the current folder and otherwise taken to be in /dev. A
  /// port outside 1 to 12 is a port fault.
  std::string DeviceOf(int port) const;

 private:
  const platform::SettingsStore& settings_;
  std::map<int, std::string> assigned_;
};

}  // namespace kelvara::ports
