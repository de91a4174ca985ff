#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "PlainComparison.h"
#include "link/ReportCollector.h"
#include "sessions/RecordedSession.h"
#include "sessions/TraceMarks.h"
#include "sessions/WholeReport.h"

namespace kelvara::test {
namespace {

/// In an input, means a long run of text, so that few bytes reach the size limits.
constexpr char kLongRun = '\xFE';
constexpr std::size_t kLongRunBytes = link::kMaxReportBytes / 2 + 1;
constexpr int kMaxLongRuns = 2;

/// A mark of a trace that changes the results or the time.
enum class Mark { Time, Clear, Undo };

/// A report that was handed over, the reason why text was dropped, or a mark.
struct Outcome {
  std::string report;
  std::optional<sessions::DropReason> dropped;
  std::optional<Mark> mark = std::nullopt;
  std::int64_t time = 0;

  bool operator==(const Outcome&) const = default;
};

using Outcomes = std::vector<Outcome>;

class Recorder : public sessions::RecordedTextReader {
 public:
  void ProcessRfpsReport(std::string_view report) override {
    outcomes.push_back({std::string(report), std::nullopt});
  }
  void NoteDropped(sessions::DropReason reason) override { outcomes.push_back({{}, reason}); }
  void SetTime(std::int64_t time) override {
    outcomes.push_back({{}, std::nullopt, Mark::Time, time});
  }
  void ClearResults() override { outcomes.push_back({{}, std::nullopt, Mark::Clear}); }
  void RestoreResults() override { outcomes.push_back({{}, std::nullopt, Mark::Undo}); }

  Outcomes outcomes;
};

/// How a text is cut into pieces.
enum class Cut { Whole, Single, Sevens, Mixed };

std::size_t NextPiece(Cut cut, std::uint32_t& state) {
  switch (cut) {
    case Cut::Whole:
      break;
    case Cut::Single:
      return 1;
    case Cut::Sevens:
      return 7;
    case Cut::Mixed:
      state = state * 1664525U + 1013904223U;
      return 1 + (state >> 8U) % 40099;
  }
  return std::string_view::npos;
}

template <typename Text>
Outcomes Replay(std::string_view text, Cut cut) {
  Recorder recorder;
  Text recorded(recorder);
  auto state = static_cast<std::uint32_t>(text.size());
  // Twice, since one file must not affect the next.
  for (int file = 0; file < 2; ++file) {
    for (std::string_view rest = text; !rest.empty();) {
      const std::string_view piece = rest.substr(0, NextPiece(cut, state));
      recorded.Feed(piece);
      rest.remove_prefix(piece.size());
    }
    recorded.End();
  }
  return std::move(recorder.outcomes);
}

Outcomes Twice(const Outcomes& outcomes) {
  Outcomes twice = outcomes;
  twice.insert(twice.end(), outcomes.begin(), outcomes.end());
  return twice;
}

int CountLines(std::string_view text) {
  int lines = 0;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos;
       end = text.find('\n', end + 1)) {
    ++lines;
  }
  return lines;
}

/// Reads a plain stream the simple way, with all of it in memory.
Outcomes ExpectedOfStream(std::string_view text) {
  Outcomes expected;
  std::size_t begin = 0;
  int lines = 0;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos;
       end = text.find('\n', end + 1)) {
    if (++lines < link::kRfpsReportLines) {
      continue;
    }
    const std::string_view report = text.substr(begin, end + 1 - begin);
    if (report.size() > link::kMaxReportBytes) {
      expected.push_back({{}, sessions::DropReason::TooLarge});
    } else {
      expected.push_back({std::string(report), std::nullopt});
    }
    begin = end + 1;
    lines = 0;
  }
  if (begin < text.size()) {
    expected.push_back({{}, sessions::DropReason::Unfinished});
  }
  return expected;
}

void CheckTrace(const Outcomes& outcomes) {
  for (const Outcome& outcome : outcomes) {
    const std::string& report = outcome.report;
    Expect(outcome.time >= 0, "a time is not before 1970");
    Expect(report.size() <= link::kMaxReportBytes, "a report is within the size limit");
    if (!outcome.dropped && !outcome.mark) {
      Expect(CountLines(report) == link::kRfpsReportLines,
             "a report has the right number of lines");
      Expect(report.back() == '\n', "a report ends with a line end");
    }
  }
}

std::string WithLongRuns(std::string_view input) {
  std::string text;
  int runs = 0;
  for (const char character : input) {
    if (character == kLongRun && runs < kMaxLongRuns) {
      text.append(kLongRunBytes, 'x');
      ++runs;
    } else {
      text += character;
    }
  }
  return text;
}

/// Expects the plain model to make the same matrix from the reports.
void CheckResults(const Outcomes& outcomes) {
  PlainComparison comparison;
  for (const Outcome& outcome : outcomes) {
    if (!outcome.dropped && !outcome.mark) {
      comparison.Process(outcome.report);
    }
  }
  comparison.Check();
}

void CheckSession(std::string_view text, std::initializer_list<Cut> cuts) {
  const Outcomes outcomes = Replay<sessions::RecordedSession>(text, Cut::Whole);
  for (const Cut cut : cuts) {
    Expect(Replay<sessions::RecordedSession>(text, cut) == outcomes,
           "a session in pieces gives the same as in one piece");
  }
  if (!text.empty() && text[0] == sessions::kCommandMark) {
    CheckTrace(outcomes);
  } else {
    Expect(outcomes == Twice(ExpectedOfStream(text)), "every 29th line ends a report");
  }
  if (text.size() < kLongRunBytes) {
    // The plain model is slow.
    CheckResults(outcomes);
  }
}

void CheckWhole(std::string_view text, std::initializer_list<Cut> cuts) {
  const Outcomes expected = Twice({{std::string(text), std::nullopt}});
  for (const Cut cut : cuts) {
    Expect(Replay<sessions::WholeReport>(text, cut) == expected,
           "a whole file is one report, however it is cut into pieces");
  }
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  const std::string text = WithLongRuns({reinterpret_cast<const char*>(data), size});
  if (text.size() < kLongRunBytes) {
    CheckSession(text, {Cut::Single, Cut::Sevens, Cut::Mixed});
    CheckWhole(text, {Cut::Whole, Cut::Single, Cut::Sevens});
  } else {
    // Long texts are slow, so one way of cutting must do.
    CheckSession(text, {Cut::Mixed});
    CheckWhole(text, {Cut::Mixed});
  }
  return 0;
}
