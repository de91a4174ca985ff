#pragma once

#include <array>

#include "platform/MenuBar.h"

namespace kelvara::platform {

/// A menu bar that only remembers, in the state that the main window's menus have before the stored
/// settings are applied.
class MemoryMenuBar : public MenuBar {
 public:
  MemoryMenuBar();

  bool IsChecked(MenuEntry entry) const override { return At(entry).checked; }
  void SetChecked(MenuEntry entry, bool checked) override { At(entry).checked = checked; }
  bool IsEnabled(MenuEntry entry) const override { return At(entry).enabled; }
  void SetEnabled(MenuEntry entry, bool enabled) override { At(entry).enabled = enabled; }
  bool IsVisible(MenuEntry entry) const override { return At(entry).visible; }
  void SetVisible(MenuEntry entry, bool visible) override { At(entry).visible = visible; }

 private:
  struct State {
    bool checked = false;
    bool enabled = true;
    bool visible = true;
  };

  const State& At(MenuEntry entry) const { return states_.at(static_cast<unsigned>(entry)); }
  State& At(MenuEntry entry) { return states_.at(static_cast<unsigned>(entry)); }

  std::array<State, kMenuEntryCount> states_;
};

}  // namespace kelvara::platform
