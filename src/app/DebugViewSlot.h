#pragma once

#include "platform/DebugView.h"

namespace kelvara::app {

/// The place of the debug window: what is written to it goes nowhere until there is one.
class DebugViewSlot : public platform::DebugView {
 public:
  /// The view that everything goes to from now on; it lives as long as this does.
  void Show(platform::DebugView* view) { view_ = view; }

  void DebugLastTxMsg(std::string_view strTx) override {
    if (view_ != nullptr) {
      view_->DebugLastTxMsg(strTx);
    }
  }

  void ShowReportText(std::string_view text) override {
    if (view_ != nullptr) {
      view_->ShowReportText(text);
    }
  }

 private:
  platform::DebugView* view_ = nullptr;
};

}  // namespace kelvara::app
