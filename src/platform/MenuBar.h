#pragma once

namespace kelvara::platform {

/// The menu entries whose state the system changes or reads, by their own names.
enum class MenuEntry {
  mnuClearGrid,
  mnuForceSearch,
  mnuClearLog,
  mnuDisplayLogOn,
  mnuDisplayLogOff,
  mnuDispRFPS,
  mnuDispSync,
  mnuDispMetres,
  mnuRpnDecimal,
  mnuRpnHex,
  mnuFpsOn,
  mnuFpsOff,
  mnuViewDebugOn,
  mnuViewDebugOff,
  mnuCaptureData,
  mnuCaptureDataStart,
  mnuCaptureStop,
  mnuCapturePause,
  mnuCaptureResume,
};

inline constexpr int kMenuEntryCount = static_cast<int>(MenuEntry::mnuCaptureResume) + 1;

/// The states of the main window's menu entries. The display options live here, as check marks, and
/// nowhere else.
class MenuBar {
 public:
  virtual ~MenuBar() = default;

  virtual bool IsChecked(MenuEntry entry) const = 0;
  virtual void SetChecked(MenuEntry entry, bool checked) = 0;

  virtual bool IsEnabled(MenuEntry entry) const = 0;
  virtual void SetEnabled(MenuEntry entry, bool enabled) = 0;

  virtual bool IsVisible(MenuEntry entry) const = 0;
  virtual void SetVisible(MenuEntry entry, bool visible) = 0;
};

}  // namespace kelvara::platform
