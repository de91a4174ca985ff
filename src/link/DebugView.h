#pragma once

#include <string_view>

namespace kelvara::link {

/// The debug window, written to only while the "View Debug" option is on.
class DebugView {
 public:
  virtual ~DebugView() = default;

  /// Shows the last command sent, in green for a moment.
  virtual void DebugLastTxMsg(std::string_view strTx) = 0;

  /// Shows the report text collected so far, in place of what was shown before.
  virtual void ShowReportText(std::string_view text) = 0;
};

}  // namespace kelvara::link
