#include <QtGlobal>
#include <algorithm>
#include <csignal>
#include <ios>

#include "cli/RunConsole.h"
#include "cli/SystemMachine.h"

int main(int argumentCount, char** arguments) {
#ifndef _WIN32
  // When the reader of standard output has gone, the write must fail without ending the program:
  // the requested files are still to be written.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  // The C library's streams report an unreadable input as the end of the input.
  std::ios::sync_with_stdio(false);
  // The program itself reports what goes wrong with a file or a port.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  kelvara::cli::SystemMachine machine;
  return kelvara::cli::RunConsole({arguments + 1, arguments + std::max(argumentCount, 1)},
                                  kelvara::cli::StandardStreams(), machine.Machine());
}
