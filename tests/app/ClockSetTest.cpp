#include <gtest/gtest.h>

#include <regex>

#include "app/LiveRig.h"

namespace kelvara::test {
namespace {

constexpr const char* kLog = "log.txt";
constexpr const char* kTrace = "trace.txt";

/// A setting of the machine's clock: in which second of the session, and by how much.
struct Setting {
  const char* name;
  int second;
  double seconds;
};

void PrintTo(const Setting& setting, std::ostream* stream) {
  *stream << setting.seconds << " seconds, in second " << setting.second;
}

/// What a session did, and when by a clock that is never set.
struct Course {
  std::vector<std::string> events;
  std::string trace;
  std::vector<std::string> questions;
};

/// A session of three minutes in which the beltpack is heard, lost, asked about and heard again.
class ClockSetTest : public testing::TestWithParam<Setting> {
 protected:
  static Course Run(const Setting& setting) {
    Course course;
    LiveRig rig;
    rig.boxes.answer = platform::MessageAnswer::No;
    rig.Start();
    EXPECT_TRUE(rig.live.Results().Capture().StartLoggingToFile(kLog));
    rig.live.StartTrace(kTrace, false);
    const auto note = [&](const std::string& text) {
      course.events.push_back(std::to_string(rig.time.Milliseconds()) + " " + text);
    };
    rig.beltpack.SetCommandNotification(
        [&](std::string_view command, std::int64_t) { note(std::string(command)); });
    rig.boxes.whileOpen = [&] {
      note("question");
      const double heard = rig.clock.wall - platform::Span(45.0);
      course.questions = {rig.boxes.boxes.back().text, rig.dateFormat.General(heard)};
    };
    std::size_t logged = rig.files.files[kLog].size();
    for (int tenth = 0; tenth < 1800; ++tenth) {
      if (tenth == 300) {
        rig.beltpack.SetFault({sim::LineFault::Silent});
      } else if (tenth == 1200) {
        rig.beltpack.SetFault({});
      }
      if (tenth == setting.second * 10) {
        rig.time.wallAhead = platform::Span(setting.seconds);
      }
      const double before = rig.clock.now + rig.time.wallAhead;
      rig.time.Pass(100);
      NoteLog(rig, before, logged, note);
    }
    course.trace =
        std::regex_replace(rig.files.files[kTrace], std::regex("\x01@[0-9]+\x02"), "(time)");
    return course;
  }

 private:
  /// Notes the entries of the last tenth of a second; each must carry a time within it.
  static void NoteLog(LiveRig& rig, double before, std::size_t& logged,
                      const std::function<void(const std::string&)>& note) {
    const std::string added = rig.files.files[kLog].substr(logged);
    logged += added.size();
    for (std::size_t start = 0; start < added.size(); start = added.find("\r\n", start) + 2) {
      const std::size_t comma = added.find(", ", start);
      const std::string stamp = added.substr(start, comma - start);
      note(added.substr(comma, added.find("\r\n", start) - comma));
      EXPECT_TRUE(stamp == rig.dateFormat.General(before) ||
                  stamp == rig.dateFormat.General(rig.clock.wall))
          << stamp << " between " << rig.dateFormat.General(before) << " and "
          << rig.dateFormat.General(rig.clock.wall);
    }
  }
};

TEST_P(ClockSetTest, ChangesNothingButTheTimeStampsOfEntries) {
  const Course undisturbed = Run({"", 0, 0.0});
  const Course disturbed = Run(GetParam());
  EXPECT_EQ(disturbed.events, undisturbed.events);
  EXPECT_EQ(disturbed.trace, undisturbed.trace);
  EXPECT_GT(undisturbed.events.size(), 100U);
}

TEST_P(ClockSetTest, TheQuestionShowsTheTimeByTheNewClock) {
  const Course course = Run(GetParam());
  ASSERT_EQ(course.questions.size(), 2U);
  EXPECT_EQ(course.questions[0], "Lost Communications with Beltpack at " + course.questions[1] +
                                     "\r\n\r\nDo you wish to generate a report, then clear the "
                                     "results?");
}

constexpr double kHour = 3600;
constexpr double kDay = 24 * kHour;

// The seconds are those of the states: connected, silent, searching after a loss, answered.
INSTANTIATE_TEST_SUITE_P(
    Settings, ClockSetTest,
    testing::Values(Setting{"ForwardConnected", 20, kHour}, Setting{"BackConnected", 20, -kHour},
                    Setting{"ForwardSilent", 45, 31}, Setting{"BackSilent", 45, -31},
                    Setting{"ForwardInLossSearch", 65, kDay},
                    Setting{"BackInLossSearch", 65, -kDay}, Setting{"ForwardLost", 90, 3650 * kDay},
                    Setting{"BackLost", 90, -3650 * kDay}),
    [](const testing::TestParamInfo<Setting>& tested) { return tested.param.name; });

}  // namespace
}  // namespace kelvara::test
