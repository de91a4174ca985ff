#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sync/DisplayOptions.h"

namespace CLI {
class App;
}

namespace kelvara::cli {

/// The options of every sub-command that writes results: how to show them and where to write them.
struct ResultOptions {
  std::string units = "rfps";
  std::string rpnBase = "dec";
  std::string fps = "off";
  std::optional<std::string> logPath;
  std::optional<std::string> reportPath;
  std::string site;
  std::string tester;
  std::string notes;
  std::optional<std::string> csvPath;
  std::optional<std::string> jsonPath;
  bool grid = false;

  /// Declares the options on a sub-command.
  void AddTo(CLI::App& command);

  /// The display options.
  sync::DisplayOptions Display() const;

  /// The files to which results will be written.
  std::vector<std::string> OutputPaths() const;

  bool JsonOnStandardOutput() const { return jsonPath == "-"; }
};

}  // namespace kelvara::cli
