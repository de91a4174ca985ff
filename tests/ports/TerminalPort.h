#pragma once

#include <QTemporaryDir>

#include "ports/PortFixture.h"
#include "support/PseudoTerminal.h"

namespace kelvara::test {

/// A port whose COM1 is the device of a pseudo-terminal.
class TerminalPortTest : public PortTest {
 protected:
  TerminalPortTest() { table_.Assign({1, terminal_.Device()}); }

  QTemporaryDir folder_;
  PseudoTerminal terminal_;
};

}  // namespace kelvara::test
