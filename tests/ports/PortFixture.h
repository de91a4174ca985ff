#pragma once

#include <gtest/gtest.h>

#include <string>

#include "base/Fault.h"
#include "platform/MemorySettingsStore.h"
#include "ports/PortTable.h"
#include "ports/QtSerialPort.h"

namespace kelvara::test {

/// A port and its table, in which a test assigns a device to COM1.
class PortTest : public testing::Test {
 protected:
  void Open() {
    port_.SetPortNumber(1);
    port_.SetOpen(true);
  }

  /// The fault's text if a port cannot be opened; empty if it can.
  static std::string FaultOfOpening(ports::QtSerialPort& port) {
    try {
      port.SetOpen(true);
      return "";
    } catch (const base::Fault& fault) {
      EXPECT_EQ(fault.Kind(), base::FaultKind::Port);
      return fault.what();
    }
  }

  platform::MemorySettingsStore settings_;
  ports::PortTable table_{settings_};
  ports::QtSerialPort port_{table_};
};

inline constexpr std::size_t kEverything = static_cast<std::size_t>(-1);

}  // namespace kelvara::test
