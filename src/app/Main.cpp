#include <CLI/CLI.hpp>
#include <QApplication>
#include <csignal>
#include <exception>
#include <iostream>

#include "app/DesktopProgram.h"
#include "help/ProgramTitle.h"
#include "ports/PortTable.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

void Complain(const char* text) { std::cerr << "kelvara: " << text << '\n'; }

}  // namespace

int main(int argumentCount, char** arguments) {
  kelvara::app::DesktopOptions options;
  CLI::App program("Commission the radio side of a wireless intercom.", "kelvara");
  program.set_version_flag("--version", kelvara::help::ProgramTitleAndVersion());
  program.add_flag("--demo", options.demo, "Use the built-in beltpack behind every port number");
  program.add_option("--site", options.sitePath, "The site that the built-in beltpack walks in")
      ->type_name("FILE");
  program.add_option("--com", options.portAssignments, "The device that a port number stands for")
      ->expected(1)
      ->check(kelvara::ports::PortAssignmentFault)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->type_name("N=DEVICE");
  program.add_option("--raw", options.rawPath, "Append a trace of the line to this file")
      ->type_name("PATH");
  program.add_flag("--test-report", options.testReport, "Run the test report and end");
  try {
    program.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      return program.exit(error);
    }
    Complain(error.what());
    return kWrongCommandLine;
  }
  options.demo = options.demo || options.sitePath.has_value();
#ifndef _WIN32
  // Whoever reads the standard error may go; a remark for nobody must not end the session.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  // The options are the program's own; the desktop library gets the name alone.
  int nameOnly = 1;
  const QApplication application(nameOnly, arguments);
  try {
    return kelvara::app::RunDesktopProgram(options);
  } catch (const std::exception& error) {
    Complain(error.what());
    return kFailed;
  }
}
