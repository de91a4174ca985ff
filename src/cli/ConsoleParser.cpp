#include "cli/ConsoleParser.h"

#include <utility>

#include "cli/CommandLine.h"
#include "cli/ConvertCommand.h"
#include "cli/PortsCommand.h"
#include "cli/RecordCommand.h"
#include "cli/ReplayCommand.h"
#include "help/ProgramTitle.h"
#ifndef _WIN32
#include "cli/SimulateCommand.h"
#endif

namespace kelvara::cli {

ConsoleParser::ConsoleParser()
    : program_("Commission the radio side of a wireless intercom, without a window.",
               "kelvara-cli") {
  program_.set_version_flag("--version", help::ProgramTitleAndVersion());
  // None at all is for the caller to complain about: here it would hide what is wrong with an
  // argument.
  program_.require_subcommand(0, 1);
  Add("replay", std::make_unique<ReplayCommand>());
  Add("convert", std::make_unique<ConvertCommand>());
  Add("record", std::make_unique<RecordCommand>());
  Add("ports", std::make_unique<PortsCommand>());
#ifndef _WIN32
  Add("simulate", std::make_unique<SimulateCommand>());
#endif
}

void ConsoleParser::Add(const char* name, std::unique_ptr<Command> command) {
  command->AddTo(program_);
  commands_.push_back({name, std::move(command)});
}

void ConsoleParser::Parse(int argumentCount, const char* const* arguments) {
  program_.parse(ReversedArguments(program_, argumentCount, arguments));
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
