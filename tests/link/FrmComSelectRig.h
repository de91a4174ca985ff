#pragma once

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "link/ComPort.h"
#include "link/FrmComSelect.h"
#include "platform/widgets/QtMessageBoxes.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/ScriptedPort.h"
#include "support/VirtualTime.h"
#include "support/WindowDriver.h"

namespace kelvara::test {

/// The faults of a window's layout, except the one about the unnamed editor that a combo box fits
/// into its own frame.
inline std::string WindowFaults(const QWidget& window) {
  std::string faults = LayoutFaults(window);
  const std::string editor = " is cut\n";
  if (const std::size_t place = faults.find('\n' + editor); place != std::string::npos) {
    faults.erase(place + 1, editor.size());
  } else if (faults.rfind(editor, 0) == 0) {
    faults.erase(0, editor.size());
  }
  return faults;
}

/// The port dialog with a scripted port and the desktop's own message boxes.
struct FrmComSelectRig {
  /// Makes and opens a new window, as the program does.
  void Open() {
    window = std::make_unique<link::FrmComSelect>(comPort, boxes, [this](int number) {
      described.push_back(number);
      return description ? description(number) : "COM" + std::to_string(number) + " is described";
    });
    ShowWindow(*window);
  }

  QListWidget& ComboCom() { return Find<QListWidget>(*window, "ComboCom"); }
  QComboBox& ComboBaud() { return Find<QComboBox>(*window, "ComboBaud"); }
  QPushButton& Button(const char* name) { return Find<QPushButton>(*window, name); }
  std::string Line() { return Find<QLabel>(*window, "Label3").text().toStdString(); }

  ManualClock clock;
  VirtualTime time{clock};
  VirtualTime::Timer timer{time, 200};
  ScriptedPort port;
  ScriptedSettingsStore store;
  widgets::QtMessageBoxes boxes;
  link::ComPort comPort{port, timer, store};
  std::function<std::string(int)> description;
  std::vector<int> described;
  std::unique_ptr<link::FrmComSelect> window;
};

}  // namespace kelvara::test
