#pragma once

#include <string>

#include "capture/DataCapture.h"
#include "support/DesktopDoubles.h"

namespace kelvara::test {

/// A data capture on a machine that tests control.
struct CaptureRig : DesktopDoubles<> {
  CaptureRig() { clock.wall = 20000.5; }

  std::string Panel() const { return std::string(capture.StatusText()); }

  RecordingLogBox logBox;
  capture::DataCapture capture{machine, &logBox};
};

/// The log line of an entry made at the rig's start time.
inline std::string EntryLine(const std::string& entry) {
  return "second1728043200, " + entry + "\r\n";
}

}  // namespace kelvara::test
