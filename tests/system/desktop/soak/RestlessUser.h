#pragma once

#include <map>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "system/desktop/DesktopProgram.h"

namespace kelvara::test {

/// A user who keeps trying everything, with keys and the mouse, in a session and in the review of a
/// recorded one.
class RestlessUser {
 public:
  /// Picks actions with `chance` and writes each step to `journal`, with the
  /// session's memory before it.
  RestlessUser(const VirtualScreen& screen, const DesktopProgram& program,
               const DesktopProgram& review, std::mt19937& chance, std::ostream& journal);

  /// Performs every action once.
  void ActAll();

  /// Performs one action.
  void Act();

  /// Closes all windows except the main window.
  void AnswerBoxes();

  /// Starts a capture to a new log.
  void StartLog();

  void Exit() const;

  /// How often each action was performed.
  const std::map<std::string, int>& Counts() const { return counts_; }

  /// The names of the logs in the order in which they were started.
  const std::vector<std::string>& Logs() const { return logs_; }

  /// The names of the reports that may have been written.
  static const std::vector<std::string>& Reports();

 private:
  struct Action {
    const char* name;
    void (RestlessUser::*act)();
  };
  static const std::vector<Action>& Actions();

  /// Performs an action, and closes all windows except the main window before and after it.
  void Do(const Action& action);
  void Convert();
  void LookAtTheLine();
  void ReadAbout();
  void LookAtThePorts();
  void ShowTheLog();
  void ChangeTheUnits();
  void ChangeTheBase();
  void ClearTheLog();
  void ClearTheGrid();
  void UndoAClear();
  void CloseANotice();
  void ForceASearch();
  void Zoom();
  void LookAtTheSurvey();
  void MoveInTheReview();
  void Resize();
  void Report();
  void AskForHelp();
  void PointAtTheGrid();

  /// Presses keys in the main window or its menus, once no menu is open.
  void PressInMainWindow(const std::vector<std::string>& keys) const;
  void Enter(const DesktopWindow& window, const std::string& text) const;
  /// Waits for a window with one of the titles. False if the question about a loss opens instead.
  bool Opens(const std::vector<std::string>& titles, DesktopWindow& window);
  void Note(const std::string& step);

  int Between(int least, int most);
  /// One of several values, all equally likely.
  template <typename Value>
  const Value& OneOf(const std::vector<Value>& values) {
    return values[static_cast<std::size_t>(Between(0, static_cast<int>(values.size()) - 1))];
  }
  /// Some of these keys in any order.
  std::vector<std::string> Some(const std::vector<std::string>& keys);

  const VirtualScreen& screen_;
  const DesktopProgram& program_;
  const DesktopProgram& review_;
  std::mt19937& chance_;
  std::ostream& journal_;
  std::map<std::string, int> counts_;
  std::vector<std::string> logs_;
  bool needsLog_ = false;
};

}  // namespace kelvara::test
