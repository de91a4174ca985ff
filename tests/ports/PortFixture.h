#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <string>

#include "base/Fault.h"
#include "platform/qt/QtSettingsStore.h"
#include "ports/PortTable.h"
#include "ports/QtSerialPort.h"
#include "support/PseudoTerminal.h"

namespace kelvara::test {

/// A port whose COM1 is the device of a pseudo-terminal.
class PortTest : public testing::Test {
 protected:
  PortTest() { table_.Assign({1, terminal_.Device()}); }

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

  QTemporaryDir folder_;
  qt::QtSettingsStore settings_{folder_.filePath("settings.ini"), "Ports"};
  ports::PortTable table_{settings_};
  PseudoTerminal terminal_;
  ports::QtSerialPort port_{table_};
};

inline constexpr std::size_t kEverything = static_cast<std::size_t>(-1);

}  // namespace kelvara::test
