#include "system/desktop/DesktopProgram.h"

#include <algorithm>
#include <stdexcept>

#include "support/WaitUntil.h"

namespace kelvara::test {
namespace {

const std::string kButton = "push button";
const std::string kMenuEntry = "menu item";

}  // namespace

DesktopProgram::DesktopProgram(const VirtualScreen& screen, const AccessibleBus& bus,
                               const ProcessRequest& request)
    : screen_(screen), bus_(bus), process_(request) {}

void DesktopProgram::Await(const std::string& what, const std::function<bool()>& holds,
                           Process::Duration limit) {
  if (!WaitUntil(holds, limit)) {
    throw std::runtime_error("timed out waiting for: " + what);
  }
}

DesktopWindow DesktopProgram::Open(const std::string& title, bool dialog) const {
  DesktopWindow found{};
  Await("the window \"" + title + "\"", [&] {
    for (const DesktopWindow& window : screen_.WindowsOf(Id())) {
      if (window.title == title && window.isDialog == dialog) {
        found = window;
        return true;
      }
    }
    return false;
  });
  screen_.Focus(found.id);
  return found;
}

bool DesktopProgram::IsOpen(const DesktopWindow& window) const {
  const std::vector<DesktopWindow> windows = screen_.WindowsOf(Id());
  return std::any_of(windows.begin(), windows.end(),
                     [&](const DesktopWindow& each) { return each.id == window.id; });
}

std::vector<DesktopWindow> DesktopProgram::OtherWindows() const {
  std::vector<DesktopWindow> windows = screen_.WindowsOf(Id());
  windows.erase(std::remove_if(windows.begin(), windows.end(),
                               [](const DesktopWindow& each) { return !each.isDialog; }),
                windows.end());
  std::reverse(windows.begin(), windows.end());
  return windows;
}

void DesktopProgram::WaitUntilClosed(const DesktopWindow& window) const {
  Await("the end of the window \"" + window.title + "\"", [&] { return !IsOpen(window); });
}

void DesktopProgram::Press(const DesktopWindow& window,
                           const std::vector<std::string>& keys) const {
  screen_.Focus(window.id);
  screen_.Press(keys);
}

ScreenReader DesktopProgram::Reader() const {
  if (!name_) {
    Await("the program to expose what it shows", [&] {
      name_ = bus_.NameOf(Id());
      return name_.has_value();
    });
  }
  return {bus_.Connection(), *name_};
}

ScreenItem DesktopProgram::Seen(const DesktopWindow& window) const {
  const ScreenReader reader = Reader();
  ScreenItem found;
  Await("what the window \"" + window.title + "\" shows", [&] {
    for (const ScreenItem& each : reader.Windows()) {
      if (each.name == window.title && (each.role == "frame") != window.isDialog) {
        found = each;
        return true;
      }
    }
    return false;
  });
  return found;
}

ScreenItem DesktopProgram::Control(const DesktopWindow& window, const std::string& role,
                                   const std::string& name) const {
  const ScreenReader reader = Reader();
  const std::string key = role + ' ' + name;
  const auto known = mainControls_.find(key);
  if (!window.isDialog && known != mainControls_.end() && reader.IsShowing(known->second)) {
    return known->second;
  }
  ScreenItem found;
  Await("the " + role + " \"" + name + "\"", [&] {
    for (const ScreenItem& each : reader.FindAll(Seen(window), role, name)) {
      if (reader.IsShowing(each)) {
        found = each;
        return true;
      }
    }
    return false;
  });
  if (!window.isDialog) {
    mainControls_[key] = found;
  }
  return found;
}

void DesktopProgram::ClickOn(const ScreenItem& item, int button) const {
  screen_.Click(Reader().AreaOf(item).center(), button);
}

ScreenItem DesktopProgram::MenuEntry(const std::vector<std::string>& entries) const {
  const ScreenReader reader = Reader();
  ScreenItem item = Seen(MainWindow());
  for (const std::string& entry : entries) {
    const std::vector<ScreenItem> found = reader.FindAll(item, kMenuEntry, entry);
    if (found.empty()) {
      throw std::runtime_error("no menu entry \"" + entry + "\"");
    }
    // An entry and a submenu may have the same name. The nearest is the right one.
    item = found.front();
  }
  return item;
}

void DesktopProgram::Choose(const std::vector<std::string>& entries) const {
  std::vector<std::string> path;
  for (const std::string& entry : entries) {
    path.push_back(entry);
    const ScreenItem item = MenuEntry(path);
    Await("the menu entry \"" + entry + "\"", [&] { return Reader().IsShowing(item); });
    ClickOn(item);
  }
}

void DesktopProgram::PressButton(const DesktopWindow& window, const std::string& name) const {
  screen_.Focus(window.id);
  ClickOn(Control(window, kButton, name));
}

void DesktopProgram::FillIn(const DesktopWindow& window, const std::string& field,
                            const std::string& text) const {
  const ScreenItem item = Control(window, "text", field);
  screen_.Focus(window.id);
  ClickOn(item);
  screen_.Press({"ctrl+a", "Delete"});
  screen_.Type(text);
  Await("\"" + text + "\" in the field \"" + field + "\"",
        [&] { return Reader().TextOf(item) == text; });
}

std::string DesktopProgram::FieldText(const DesktopWindow& window, const std::string& field) const {
  return Reader().TextOf(Control(window, "text", field));
}

std::string DesktopProgram::MessageText(const DesktopWindow& message) const {
  const ScreenReader reader = Reader();
  for (const ScreenItem& child : reader.Children(Seen(message))) {
    if (child.role == "label" && !child.name.empty()) {
      return child.name;
    }
  }
  return "";
}

std::vector<std::string> DesktopProgram::Buttons(const DesktopWindow& window) const {
  const ScreenReader reader = Reader();
  std::vector<std::string> names;
  std::vector<ScreenItem> unvisited = {Seen(window)};
  while (!unvisited.empty()) {
    const ScreenItem item = unvisited.back();
    unvisited.pop_back();
    for (const ScreenItem& child : reader.Children(item)) {
      if (child.role == kButton) {
        names.push_back(child.name);
      } else {
        unvisited.push_back(child);
      }
    }
  }
  return names;
}

std::vector<std::vector<std::string>> DesktopProgram::Grid() const {
  return Reader().Table(Control(MainWindow(), "table", "Sync grid"));
}

void DesktopProgram::OpenGridMenu() const {
  constexpr int kRightButton = 3;
  ClickOn(Control(MainWindow(), "table", "Sync grid"), kRightButton);
}

int DesktopProgram::GridRows() const {
  return Reader().RowCount(Control(MainWindow(), "table", "Sync grid"));
}

std::string DesktopProgram::LogText() const {
  return Reader().TextOf(Control(MainWindow(), "text", "Sync data log"));
}

std::string DesktopProgram::Notice() const {
  const ScreenReader reader = Reader();
  for (const ScreenItem& alert : reader.FindAll(Seen(MainWindow()), "alert message")) {
    if (reader.IsShowing(alert)) {
      return alert.name;
    }
  }
  return "";
}

std::size_t DesktopProgram::Panel(int number) const {
  const ScreenReader reader = Reader();
  const std::vector<ScreenItem> bars = reader.FindAll(Seen(MainWindow()), "status bar", "");
  std::vector<ScreenItem> labels;
  for (const ScreenItem& bar : bars) {
    labels = reader.FindAll(bar, "label");
  }
  const ScreenItem& label = labels.at(static_cast<std::size_t>(number) - 1);
  return std::hash<std::string>()(screen_.Picture(reader.AreaOf(label)));
}

bool DesktopProgram::IsChecked(const std::vector<std::string>& entries) const {
  return Reader().IsChecked(MenuEntry(entries));
}

bool DesktopProgram::IsEnabled(const std::vector<std::string>& entries) const {
  return Reader().IsEnabled(MenuEntry(entries));
}

}  // namespace kelvara::test
