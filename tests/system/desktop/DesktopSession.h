#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/SimulatedBeltpack.h"
#include "system/desktop/DesktopTest.h"

namespace kelvara::test {

/// Sessions of the desktop program over pseudo-terminals.
class DesktopSession : public DesktopTest {
 protected:
  using GridText = std::vector<std::vector<std::string>>;

  /// Starts a capture in the capture window by typing the file's name.
  void Capture(const DesktopProgram& program, const std::string& name) const;

  /// The lines captured to a file so far. Expects each to end in CR LF.
  std::vector<std::string> CapturedLines(const std::string& name) const;

  /// The readings among them, without their time stamps.
  std::vector<std::string> CapturedReadings(const std::string& name) const;

  void AwaitReadings(const std::string& name, std::size_t count) const;

  /// The grid that the console program makes from the trace of a session.
  GridText ReplayedGrid(const std::string& trace, const Arguments& options = {}) const;

  /// Whether the program has a device open.
  static bool Holds(const DesktopProgram& program, const std::string& device);
};

/// The number of cells of a grid that hold a reading.
std::size_t FilledCells(const std::vector<std::vector<std::string>>& grid);

}  // namespace kelvara::test
