#pragma once

#include <string>

#include "capture/DataCapture.h"
#include "support/DesktopDoubles.h"

namespace kelvara::test {

/// A data capture on a machine that tests move by hand.
struct CaptureRig : DesktopDoubles<> {
  CaptureRig() { clock.wall = 20000.5; }

  std::string Panel() const { return std::string(capture.StatusText()); }

  RecordingLogBox logBox;
  capture::DataCapture capture{machine, &logBox};
};

/// The line that an entry makes at the rig's first moment.
inline std::string EntryLine(const std::string& entry) {
  return "second1728043200, " + entry + "\r\n";
}

}  // namespace kelvara::test
