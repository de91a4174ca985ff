#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/SurveyInput.h"
#include "cli/SurveyJson.h"

namespace kelvara::cli {

/// `kelvara-cli survey`: every antenna's length from all readings, with its uncertainty.
class SurveyCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  /// What is wrong with the command line; empty if nothing is.
  std::string Fault() const;

  ExitCode Survey(const SurveyInput& input, const SurveyInput* older, const Streams& streams,
                  SurveyOutput& output) const;
  bool WriteFiles(const SurveyInput& input, const SurveyOutput& output, const Streams& streams,
                  const CommandMachine& machine) const;

  std::vector<std::string> files_;
  std::optional<std::string> comparePath_;
  std::optional<std::string> reference_;
  std::optional<std::string> length_;
  std::optional<std::string> htmlPath_;
  std::optional<std::string> jsonPath_;
};

}  // namespace kelvara::cli
