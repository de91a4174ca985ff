#include "platform/qt/Console.h"

#include <unistd.h>

#include <csignal>

namespace kelvara::qt {

void OutliveReaders() { std::signal(SIGPIPE, SIG_IGN); }

std::shared_ptr<void> PrepareConsole() { return nullptr; }

bool IsErrorTerminal() { return ::isatty(STDERR_FILENO) != 0; }

std::shared_ptr<void> JoinConsole() { return nullptr; }

std::string ConsoleText(std::string_view text) { return std::string(text); }

}  // namespace kelvara::qt
