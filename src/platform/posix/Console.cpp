#include "platform/qt/Console.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

namespace kelvara::qt {

void OutliveReaders() { std::signal(SIGPIPE, SIG_IGN); }

std::shared_ptr<void> PrepareConsole() { return nullptr; }

bool IsErrorTerminal() { return ::isatty(STDERR_FILENO) != 0; }

std::shared_ptr<void> JoinConsole() { return nullptr; }

void PrintError(std::string_view line, const char* /*title*/) { std::cerr << line << '\n'; }

std::string ConsoleText(std::string_view text) { return std::string(text); }

}  // namespace kelvara::qt
