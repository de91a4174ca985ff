#include "system/desktop/soak/RestlessUser.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "system/desktop/soak/ProcessWatch.h"

namespace kelvara::test {
namespace {

using std::chrono::milliseconds;

const std::string kCapture = "Capture Sync Reports To File";
const std::string kLossQuestion = "Beltpack Comms Lost";
const std::string kPorts = "Select Serial Port";
const std::string kReport = "Generate Reoprt";
const std::string kSurvey = "Survey";

}  // namespace

RestlessUser::RestlessUser(const VirtualScreen& screen, const DesktopProgram& program,
                           const DesktopProgram& review, std::mt19937& chance,
                           std::ostream& journal)
    : screen_(screen), program_(program), review_(review), chance_(chance), journal_(journal) {}

const std::vector<std::string>& RestlessUser::Reports() {
  static const std::vector<std::string> kNames = {"first.html", "second.html", "third.html"};
  return kNames;
}

const std::vector<RestlessUser::Action>& RestlessUser::Actions() {
  static const std::vector<Action> kActions = {
      {"convert", &RestlessUser::Convert},
      {"look at the line", &RestlessUser::LookAtTheLine},
      {"read about", &RestlessUser::ReadAbout},
      {"look at the ports", &RestlessUser::LookAtThePorts},
      {"show the log", &RestlessUser::ShowTheLog},
      {"change the units", &RestlessUser::ChangeTheUnits},
      {"change the base", &RestlessUser::ChangeTheBase},
      {"clear the log", &RestlessUser::ClearTheLog},
      {"clear the grid", &RestlessUser::ClearTheGrid},
      {"undo a clear", &RestlessUser::UndoAClear},
      {"close a notice", &RestlessUser::CloseANotice},
      {"force a search", &RestlessUser::ForceASearch},
      {"zoom", &RestlessUser::Zoom},
      {"look at the survey", &RestlessUser::LookAtTheSurvey},
      {"move in the review", &RestlessUser::MoveInTheReview},
      {"resize", &RestlessUser::Resize},
      {"report", &RestlessUser::Report},
      {"ask for help", &RestlessUser::AskForHelp},
      {"point at the grid", &RestlessUser::PointAtTheGrid}};
  return kActions;
}

void RestlessUser::ActAll() {
  for (const Action& action : Actions()) {
    Do(action);
  }
}

void RestlessUser::Act() { Do(OneOf(Actions())); }

void RestlessUser::Do(const Action& action) {
  AnswerBoxes();
  if (needsLog_) {
    // Stops the capture if one is running.
    PressInMainWindow({"alt+t", "l", "s"});
    AnswerBoxes();
    StartLog();
    AnswerBoxes();
  }
  Note(action.name);
  (this->*action.act)();
  ++counts_[action.name];
  AnswerBoxes();
}

void RestlessUser::AnswerBoxes() {
  constexpr int kMostAnswers = 10;
  constexpr milliseconds kPause{300};
  for (int answers = 0; answers < kMostAnswers; ++answers) {
    std::this_thread::sleep_for(kPause);
    const std::vector<DesktopWindow> windows = program_.OtherWindows();
    if (windows.empty()) {
      return;
    }
    // However the port window is closed, the link restarts, and the capture with it.
    needsLog_ = needsLog_ || windows.front().title == kPorts;
    Note("answer " + windows.front().title);
    program_.Press(windows.front(),
                   {OneOf(std::vector<std::string>{"Return", "Escape", "Escape"})});
    ++counts_["answer"];
  }
  throw std::runtime_error("a window does not close");
}

void RestlessUser::StartLog() {
  PressInMainWindow({"alt+t", "l"});
  DesktopWindow dialog{};
  needsLog_ = !Opens({kCapture}, dialog);
  if (needsLog_) {
    return;
  }
  logs_.push_back("readings-" + std::to_string(logs_.size() + 1) + ".txt");
  Note("log to " + logs_.back());
  ++counts_["log"];
  Enter(dialog, logs_.back());
}

void RestlessUser::Exit() const { PressInMainWindow({"alt+f", "e"}); }

void RestlessUser::Convert() {
  PressInMainWindow({"alt+t", "c"});
  DesktopWindow converter{};
  if (Opens({"Converter"}, converter)) {
    Enter(converter, std::to_string(Between(-99999, 99999)));
    program_.Press(converter, {"Tab", "Tab"});
    Enter(converter, "1F");
  }
}

void RestlessUser::LookAtTheLine() {
  PressInMainWindow({"alt+o", "Up", "Right", "o"});
  DesktopWindow window{};
  if (Opens({"Kelvara Debug"}, window)) {
    std::this_thread::sleep_for(milliseconds(Between(0, 5000)));
  }
}

void RestlessUser::ReadAbout() { PressInMainWindow({"alt+h", "a"}); }

void RestlessUser::LookAtThePorts() {
  PressInMainWindow({"alt+f", "s"});
  DesktopWindow dialog{};
  if (Opens({kPorts}, dialog)) {
    program_.Press(dialog, {"Down", "Down", "Up", "Up"});
  }
}

void RestlessUser::ShowTheLog() {
  PressInMainWindow({"alt+o", "l", OneOf(std::vector<std::string>{"o", "f"})});
}

void RestlessUser::ChangeTheUnits() {
  PressInMainWindow({"alt+o", "f", OneOf(std::vector<std::string>{"r", "a", "m"})});
}

void RestlessUser::ChangeTheBase() {
  PressInMainWindow({"alt+o", "b", OneOf(std::vector<std::string>{"d", "h"})});
  PressInMainWindow({"alt+o", "s", OneOf(std::vector<std::string>{"o", "f"})});
}

void RestlessUser::ClearTheLog() { PressInMainWindow({"alt+f", "l"}); }

void RestlessUser::ClearTheGrid() { PressInMainWindow({"alt+f", "c", "Return"}); }

void RestlessUser::UndoAClear() {
  ClearTheGrid();
  if (Between(0, 1) == 0) {
    // The notice's button.
    program_.Press(program_.MainWindow(), {"alt+n"});
  } else {
    PressInMainWindow({"alt+i", "u"});
  }
}

void RestlessUser::CloseANotice() { PressInMainWindow({"alt+shift+n"}); }

void RestlessUser::ForceASearch() { PressInMainWindow({"alt+f", "c", "c", "Return"}); }

void RestlessUser::Resize() {
  screen_.Resize(program_.MainWindow().id, {Between(400, 1280), Between(300, 1000)});
}

void RestlessUser::Report() {
  PressInMainWindow({"alt+t", "g"});
  DesktopWindow window{};
  if (Opens({kReport, "Report Can't Be Generated"}, window) && window.title == kReport) {
    Enter(window, OneOf(Reports()));
    ++counts_["report to a file"];
  }
}

void RestlessUser::AskForHelp() { PressInMainWindow({"F1"}); }

void RestlessUser::PointAtTheGrid() {
  const QRect area = screen_.AreaOf(program_.MainWindow().id);
  screen_.PointAt({Between(area.left(), area.right()), Between(area.top(), area.bottom())});
  std::this_thread::sleep_for(std::chrono::seconds(1));
  screen_.PointAt(VirtualScreen::kCorner);
}

void RestlessUser::Zoom() { PressInMainWindow(Some({"ctrl+plus", "ctrl+minus", "ctrl+0"})); }

void RestlessUser::LookAtTheSurvey() {
  PressInMainWindow({"alt+s"});
  DesktopWindow window{};
  if (Opens({kSurvey}, window)) {
    program_.Press(window, Some({"Tab", "Down", "Up", "1"}));
    std::this_thread::sleep_for(milliseconds(Between(0, 5000)));
    program_.Press(window, {"Escape"});
  }
}

void RestlessUser::MoveInTheReview() {
  const DesktopWindow window = review_.MainWindow();
  review_.Press(window, {"alt+o", "f", OneOf(std::vector<std::string>{"r", "a", "m"})});
  review_.Press(window,
                Some({"alt+Left", "alt+Right", "Left", "Right", "Home", "End", "Prior", "Next"}));
}

void RestlessUser::PressInMainWindow(const std::vector<std::string>& keys) const {
  const DesktopWindow window = program_.MainWindow();
  // A menu may still be open; keys pressed while it closes are lost.
  DesktopProgram::Await("the end of a menu", [&] {
    const bool isOpen = screen_.ShowsMenuOf(program_.Id());
    if (isOpen) {
      program_.Press(window, {"Escape"});
    }
    return !isOpen;
  });
  program_.Press(window, keys);
}

void RestlessUser::Enter(const DesktopWindow& window, const std::string& text) const {
  program_.Press(window, {"ctrl+a"});
  screen_.Type(text);
  program_.Press(window, {"Return"});
}

bool RestlessUser::Opens(const std::vector<std::string>& titles, DesktopWindow& window) {
  bool isDisturbed = false;
  DesktopProgram::Await("the window \"" + titles.front() + "\"", [&] {
    for (const DesktopWindow& each : program_.OtherWindows()) {
      window = each;
      isDisturbed = each.title == kLossQuestion;
      if (isDisturbed || std::find(titles.begin(), titles.end(), each.title) != titles.end()) {
        return true;
      }
    }
    return false;
  });
  counts_["disturbed"] += isDisturbed ? 1 : 0;
  return !isDisturbed;
}

void RestlessUser::Note(const std::string& step) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  journal_ << now.time_since_epoch().count() << ' ' << ResidentKilobytes(program_.Id()) << " kB "
           << step << std::endl;
}

std::vector<std::string> RestlessUser::Some(const std::vector<std::string>& keys) {
  constexpr int kMost = 20;
  std::vector<std::string> pressed;
  for (int left = Between(1, kMost); left > 0; --left) {
    pressed.push_back(OneOf(keys));
  }
  return pressed;
}

int RestlessUser::Between(int least, int most) {
  return std::uniform_int_distribution<int>(least, most)(chance_);
}

}  // namespace kelvara::test
