#include <gtest/gtest.h>

#include "app/LiveRig.h"
#include "base/Fault.h"
#include "support/ReplayedTrace.h"

namespace kelvara::test {
namespace {

constexpr const char* kLog = "log.txt";
constexpr const char* kTrace = "trace.txt";

/// The state of the link when the line fails.
enum class LinkState {
  Searching,     ///< Since start-up; the break is asserted.
  Connected,     ///< Reports arrive.
  BreakSet,      ///< Nothing was heard for 30 seconds: searching after a loss.
  QuestionOpen,  ///< The user is being asked about the loss.
  Lost,          ///< The user has answered, and the search goes on.
  PortClosed,    ///< The user chose a port that could not be opened.
};

constexpr const char* NameOf(LinkState state) {
  constexpr std::array kNames{"Searching",    "Connected", "BreakSet",
                              "QuestionOpen", "Lost",      "PortClosed"};
  return kNames.at(static_cast<std::size_t>(state));
}

struct Situation {
  sim::LineFaultName fault;
  LinkState state;
};

void PrintTo(const Situation& situation, std::ostream* stream) {
  *stream << situation.fault.name << " in state " << NameOf(situation.state);
}

/// A live session that captures a log and writes a trace, brought into a link state. The user
/// answers questions with No.
class LineFaultStatesTest : public testing::TestWithParam<Situation>, public LiveRig {
 protected:
  static constexpr int kFaultMilliseconds = 120 * 1000;
  static constexpr int kRecoveryMilliseconds = 60 * 1000;

  LineFaultStatesTest() {
    boxes.answer = platform::MessageAnswer::No;
    Start();
    EXPECT_TRUE(live.Results().Capture().StartLoggingToFile(kLog));
    live.StartTrace(kTrace, false);
  }

  /// Brings the link into the state, makes the line faulty for a while, and repairs it.
  void RunFaultIn(LinkState state) {
    if (state == LinkState::Searching) {
      time.Pass(400);
      EXPECT_TRUE(port.IsBreak());
      RunFault();
      return;
    }
    time.Pass(30 * 1000);
    EXPECT_EQ(live.Link().StatusText(), "Beltpack Connected...");
    EXPECT_GT(live.Results().Model().ReportCount(), 3);
    if (state == LinkState::Connected) {
      RunFault();
    } else if (state == LinkState::PortClosed) {
      ChooseMissingPort();
      RunFault();
      live.Port().SelectPort(0, "19200");
    } else {
      beltpack.SetFault({sim::LineFault::Silent});
      RunFaultInLoss(state);
    }
  }

  const std::string& Log() { return files.files[kLog]; }
  const std::string& Trace() { return files.files[kTrace]; }

  /// The readings in the log, without their stamps; expects every line to be whole.
  std::vector<std::string> LoggedReadings() {
    std::vector<std::string> readings;
    std::string_view rest = Log();
    while (!rest.empty()) {
      const std::size_t end = rest.find("\r\n");
      if (end == std::string_view::npos) {
        ADD_FAILURE() << "half a line: " << rest;
        break;
      }
      const std::string_view line = rest.substr(0, end);
      rest.remove_prefix(end + 2);
      const std::size_t comma = line.find(", ");
      EXPECT_EQ(line.substr(0, 6), "second") << line;
      if (line.find("->") != std::string_view::npos) {
        readings.emplace_back(line.substr(comma + 2));
      }
    }
    return readings;
  }

 private:
  void ChooseMissingPort() {
    beltpack.Unplug();
    EXPECT_THROW(live.Port().SelectPort(0, "19200"), base::Fault);
    EXPECT_FALSE(port.IsOpen());
    beltpack.Plug();
  }

  void RunFaultInLoss(LinkState state) {
    if (state == LinkState::QuestionOpen) {
      boxes.whileOpen = [this] { RunFault(); };
      time.Pass(60 * 1000);
      EXPECT_EQ(boxes.boxes.size(), 1U) << "one question at a time";
      boxes.whileOpen = {};
      return;
    }
    time.Pass(state == LinkState::BreakSet ? 36500 : 60500);
    EXPECT_EQ(live.Link().bLinkLossPending(), state == LinkState::BreakSet ? 1 : 0);
    EXPECT_EQ(boxes.boxes.size(), state == LinkState::BreakSet ? 0U : 1U);
    EXPECT_TRUE(port.IsBreak());
    RunFault();
  }

  /// Makes the line faulty for two minutes. Data recorded before stays unchanged, and polling goes
  /// on.
  void RunFault() {
    const std::string logBefore = Log();
    const std::string traceBefore = Trace();
    const int reportsBefore = live.Results().Model().ReportCount();
    beltpack.SetFault({GetParam().fault.fault});
    time.Pass(kFaultMilliseconds);
    EXPECT_EQ(Log().substr(0, logBefore.size()), logBefore);
    EXPECT_EQ(Trace().substr(0, traceBefore.size()), traceBefore);
    EXPECT_GE(live.Results().Model().ReportCount(), reportsBefore);
    EXPECT_EQ(CommandsIn(Trace()) - CommandsIn(traceBefore),
              kFaultMilliseconds / link::kRfpsTimerMilliseconds);
    EXPECT_LE(port.InputCount(), platform::kInputBufferBytes);
    beltpack.SetFault({});
    beltpack.Plug();
  }
};

TEST_P(LineFaultStatesTest, KeepsAllDataAndRecoversByItself) {
  RunFaultIn(GetParam().state);
  const int reportsBefore = live.Results().Model().ReportCount();
  time.Pass(kRecoveryMilliseconds);
  EXPECT_EQ(live.Link().StatusText(), "Beltpack Connected...");
  EXPECT_FALSE(timerComPort.IsOn());
  EXPECT_GE(live.Results().Model().ReportCount(), reportsBefore + 13);

  // Everything received was counted and logged, and nothing else.
  const ReplayedTrace replayed(Trace());
  EXPECT_EQ(ModelText(live.Results().Model()), ModelText(replayed.model));
  EXPECT_EQ(LoggedReadings(), replayed.log.entries);
  EXPECT_EQ(live.TraceFailure(), "");
}

std::vector<Situation> AllSituations() {
  std::vector<Situation> all;
  for (const sim::LineFaultName& fault : sim::kLineFaultNames) {
    for (const LinkState state :
         {LinkState::Searching, LinkState::Connected, LinkState::BreakSet, LinkState::QuestionOpen,
          LinkState::Lost, LinkState::PortClosed}) {
      all.push_back({fault, state});
    }
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Faults, LineFaultStatesTest, testing::ValuesIn(AllSituations()),
                         [](const testing::TestParamInfo<Situation>& tested) {
                           std::string name(tested.param.fault.name);
                           name = name == "24" ? "goodbye" : name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name + "_" + NameOf(tested.param.state);
                         });

}  // namespace
}  // namespace kelvara::test
