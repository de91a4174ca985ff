#include <QtGlobal>
#include <ios>
#include <memory>

#include "cli/RunConsole.h"
#include "cli/SystemMachine.h"
#include "platform/qt/Console.h"
#include "platform/qt/ProgramArguments.h"

int main(int argumentCount, char** arguments) {
  // When the reader of standard output has gone, the requested files are still to be written.
  kelvara::qt::OutliveReaders();
  const std::shared_ptr<void> console = kelvara::qt::PrepareConsole();
  // The C library's streams report an unreadable input as the end of the input.
  std::ios::sync_with_stdio(false);
  // The program itself reports what goes wrong with a file or a port.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  kelvara::cli::SystemMachine machine;
  return kelvara::cli::RunConsole(kelvara::qt::ProgramArguments(argumentCount, arguments),
                                  kelvara::cli::StandardStreams(), machine.Machine());
}
