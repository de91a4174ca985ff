#pragma once

#include <initializer_list>
#include <string>

#include "report/SyncReport.h"
#include "support/DesktopDoubles.h"

namespace kelvara::test {

/// A report generator with the model and the options that it reads.
struct ReportRig : DesktopDoubles<> {
  ReportRig() { clock.wall = 20000.5; }

  bool Generate(const std::string& notes = "") {
    return syncReport.GenerateReport("report.html", "a site", "a tester", notes);
  }

  /// Two antennas, RPN 13 and RPN 7, that hear each other.
  void FillWithTwoAntennas() {
    model.FindOrAddAa(13, 1, 2);
    model.FindOrAddAa(7, 0, 2);
    for (int reading = 0; reading < 10; ++reading) {
      model.AddPhase(0, 1, 9);
      model.AddPhase(1, 0, -8);
    }
  }

  const std::string& Html() { return files.files["report.html"]; }

  /// The report from the first occurrence of a text on.
  std::string HtmlFrom(const std::string& text) {
    const std::size_t place = Html().find(text);
    return place == std::string::npos ? "no " + text : Html().substr(place);
  }

  /// What follows the first occurrence of a text in the report, as long as `expected`.
  std::string HtmlAfter(const std::string& text, const std::string& expected) {
    return HtmlFrom(text).substr(text.size(), expected.size());
  }

  sync::SyncModel model;
  sync::DisplayOptions options;
  report::SyncReport syncReport{model, options, machine};
};

/// The lines, each ended by CR LF.
inline std::string Lines(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\r\n";
  }
  return text;
}

}  // namespace kelvara::test
