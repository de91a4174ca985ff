#include <QtGlobal>
#include <algorithm>
#include <csignal>
#include <ios>

#include "cli/RunConsole.h"
#include "cli/SystemMachine.h"

int main(int argumentCount, char** arguments) {
#ifndef _WIN32
  // A reader of the standard output that is gone is a write that fails, not the end of the program:
  // the files that were asked for are still to be written.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  // Streams of the C library would take an input that cannot be read for one that has ended.
  std::ios::sync_with_stdio(false);
  // What the library has to say about a file or a port, the program says itself.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  kelvara::cli::SystemMachine machine;
  return kelvara::cli::RunConsole({arguments + 1, arguments + std::max(argumentCount, 1)},
                                  kelvara::cli::StandardStreams(), machine.Machine());
}
