#include <CLI/CLI.hpp>
#include <QApplication>
#include <QList>
#include <QMutex>
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/DesktopProgram.h"
#include "help/ProgramTitle.h"
#include "platform/qt/Console.h"
#include "platform/qt/ProgramArguments.h"
#include "ports/PortTable.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

void Complain(const char* text) {
  kelvara::qt::PrintError(std::string("kelvara: ") + text, kelvara::help::kProgramTitle);
}

/// Holds the desktop library's messages while it connects to a display. Without a display it prints
/// many lines and then ends the program; one line says enough.
class HeldMessages {
 public:
  static void Hold(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    const QMutexLocker lock(&mutex);
    if (type == QtFatalMsg) {
      const bool noDisplay = message.contains(QStringLiteral("platform plugin"));
      Complain(noDisplay ? "no display can be opened; kelvara-cli works without one"
                         : qPrintable(message));
      std::_Exit(kFailed);
    }
    messages.emplaceBack(type, message);
  }

  static void Print() {
    const QMutexLocker lock(&mutex);
    for (const auto& [type, message] : std::as_const(messages)) {
      qt_message_output(type, QMessageLogContext(), message);
    }
    messages.clear();
  }

 private:
  inline static QMutex mutex;
  inline static QList<std::pair<QtMsgType, QString>> messages;
};

/// Connects to the display; without one the program ends here.
std::unique_ptr<QApplication> ConnectToDisplay(int& argumentCount, char** arguments) {
  qInstallMessageHandler(HeldMessages::Hold);
  auto application = std::make_unique<QApplication>(argumentCount, arguments);
  qInstallMessageHandler(nullptr);
  HeldMessages::Print();
  return application;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // The reader of standard error may be gone; a message to it must not end the session.
  kelvara::qt::OutliveReaders();
  kelvara::app::DesktopOptions options;
  CLI::App program("Commission the radio side of a wireless intercom.", "kelvara");
  // An argument that begins with a slash is a file on every system.
  program.allow_windows_style_options(false);
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
  program.add_flag("--no-journal", options.noJournal, "Keep no journal of the session");
  program.add_flag("--test-report", options.testReport, "Run the test report and end");
  const std::vector<CLI::Option*> liveOptions =
      program.get_options([](const CLI::Option* option) { return option->get_configurable(); });
  program.add_option("FILE", options.reviewPath, "A recorded session to open for review")
      ->type_name("");
  try {
    std::vector<std::string> given = kelvara::qt::ProgramArguments(argumentCount, arguments);
    std::reverse(given.begin(), given.end());  // The parser reads from the back.
    program.parse(std::move(given));
    for (const CLI::Option* const option : liveOptions) {
      if (options.reviewPath && !option->empty()) {
        throw CLI::ValidationError(option->get_name() + " cannot be combined with a FILE");
      }
    }
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      const std::shared_ptr<void> console = kelvara::qt::JoinConsole();
      program.exit(error);
      if (!std::cout.flush()) {
        Complain("cannot write to standard output");
        return kFailed;
      }
      return 0;
    }
    Complain(error.what());
    return kWrongCommandLine;
  }
  options.demo = options.demo || options.sitePath.has_value();
  // The options are the program's own; the desktop library gets only the program's name.
  int nameOnly = 1;
  const std::unique_ptr<QApplication> application = ConnectToDisplay(nameOnly, arguments);
  try {
    return kelvara::app::RunDesktopProgram(options);
  } catch (const std::exception& error) {
    Complain(error.what());
    return kFailed;
  }
}
