#include "cli/ConsoleParser.h"

#include <algorithm>
#include <string>
#include <utility>

#include "cli/ConvertCommand.h"
#include "cli/PortsCommand.h"
#include "cli/RecordCommand.h"
#include "cli/ReplayCommand.h"
#include "cli/SurveyCommand.h"
#include "cli/SystemCommands.h"
#include "help/ProgramTitle.h"

namespace kelvara::cli {
namespace {

using Arguments = std::vector<std::string>;

bool IsDashed(const std::string& argument) { return argument.size() > 1 && argument[0] == '-'; }

bool TakesValue(const CLI::App& command, const std::string& name) {
  const CLI::Option* const option =
      name.starts_with("--") ? command.get_option_no_throw(name) : nullptr;
  return option != nullptr && option->get_items_expected_min() > 0;
}

/// Keeps the parser from taking a VALUE of "convert FIELD VALUE" that begins with a dash for an
/// option.
void ProtectDashedValue(Arguments& arguments) {
  if (arguments.size() == 3 && IsDashed(arguments[2]) && arguments[2] != "--help" &&
      arguments[2] != "-h") {
    arguments.insert(arguments.begin() + 2, "--");
  }
}

/// Keeps the parser from taking the argument after an empty "--site=" as its value, and a "--"
/// after a file as the end of the sub-command.
void ProtectFilesAndEmptyValues(const CLI::App& command, Arguments& arguments) {
  for (auto argument = arguments.begin() + 1; argument != arguments.end(); ++argument) {
    if (*argument == "--") {
      for (argument = arguments.erase(argument); argument != arguments.end(); ++argument) {
        argument->insert(0, IsDashed(*argument) ? "./" : "");
      }
      return;
    }
    if (argument->ends_with('=') &&
        TakesValue(command, argument->substr(0, argument->size() - 1))) {
      argument->pop_back();
      argument = arguments.insert(argument + 1, "");
    } else if (TakesValue(command, *argument) && argument + 1 != arguments.end()) {
      ++argument;
    }
  }
}

}  // namespace

ConsoleParser::ConsoleParser()
    : program_("Commission the radio side of a wireless intercom, without a window.",
               "kelvara-cli") {
  // An argument that begins with a slash is a file on every system.
  program_.allow_windows_style_options(false);
  program_.set_version_flag("--version", help::ProgramTitleAndVersion());
  // The caller reports a missing sub-command: reported here, it would hide a wrong argument.
  program_.require_subcommand(0, 1);
  Add("replay", std::make_unique<ReplayCommand>());
  Add("survey", std::make_unique<SurveyCommand>());
  Add("convert", std::make_unique<ConvertCommand>());
  Add("record", std::make_unique<RecordCommand>());
  Add("ports", std::make_unique<PortsCommand>());
  for (NamedCommand& named : SystemCommands()) {
    Add(named.name, std::move(named.command));
  }
}

void ConsoleParser::Add(const char* name, std::unique_ptr<Command> command) {
  command->AddTo(program_);
  commands_.push_back({name, std::move(command)});
}

void ConsoleParser::Parse(Arguments arguments) {
  const auto named = program_.get_subcommands([&](const CLI::App* command) {
    return !arguments.empty() && command->get_name() == arguments[0];
  });
  if (!named.empty() && arguments[0] == "convert") {
    ProtectDashedValue(arguments);
  } else if (!named.empty()) {
    ProtectFilesAndEmptyValues(*named[0], arguments);
  }
  std::reverse(arguments.begin(), arguments.end());  // The parser reads from the back.
  program_.parse(std::move(arguments));
}

Command* ConsoleParser::Chosen() const {
  for (const NamedCommand& named : commands_) {
    if (program_.got_subcommand(named.name)) {
      return named.command.get();
    }
  }
  return nullptr;
}

}  // namespace kelvara::cli
