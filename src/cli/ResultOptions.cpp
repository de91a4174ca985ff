#include "cli/ResultOptions.h"

#include <CLI/CLI.hpp>

namespace kelvara::cli {

void ResultOptions::AddTo(CLI::App& command) {
  command.add_option("--units", units, "Units of the phases: rfps, aasync or metres")
      ->check(CLI::IsMember({"rfps", "aasync", "metres"}))
      ->type_name("UNITS")
      ->capture_default_str()
      ->group("Display");
  command.add_option("--rpn", rpnBase, "Base of the RPNs: dec or hex")
      ->check(CLI::IsMember({"dec", "hex"}))
      ->type_name("BASE")
      ->capture_default_str()
      ->group("Display");
  command.add_option("--fps", fps, "Show the FPS after each RPN: on or off")
      ->check(CLI::IsMember({"on", "off"}))
      ->type_name("SWITCH")
      ->capture_default_str()
      ->group("Display");
  command.add_option("--log", logPath, "Append every log entry to this file")
      ->type_name("PATH")
      ->group("Results");
  command.add_option("--report", reportPath, "Write the HTML report to this file")
      ->type_name("PATH")
      ->group("Results");
  command.add_option("--site", site, "Site for the report")->type_name("TEXT")->group("Results");
  command.add_option("--tester", tester, "Tester for the report")
      ->type_name("TEXT")
      ->group("Results");
  command.add_option("--notes", notes, "Notes for the report")->type_name("TEXT")->group("Results");
  command.add_option("--csv", csvPath, "Write the grid as comma-separated text to this file")
      ->type_name("PATH")
      ->group("Results");
  command
      .add_option("--json", jsonPath,
                  "Write the results as JSON to this file (- is standard output)")
      ->type_name("PATH")
      ->group("Results");
  command.add_flag("--grid", grid, "Print the grid as a table")->group("Results");
}

sync::DisplayOptions ResultOptions::Display() const {
  return {.units = units == "aasync"   ? sync::PhaseUnits::AaSync
                   : units == "metres" ? sync::PhaseUnits::Metres
                                       : sync::PhaseUnits::Rfps,
          .rpnHex = rpnBase == "hex",
          .fpsShown = fps == "on"};
}

std::vector<std::string> ResultOptions::OutputPaths() const {
  std::vector<std::string> paths;
  for (const auto& path : {logPath, reportPath, csvPath}) {
    if (path) {
      paths.push_back(*path);
    }
  }
  if (jsonPath && !JsonOnStandardOutput()) {
    paths.push_back(*jsonPath);
  }
  return paths;
}

}  // namespace kelvara::cli
