#pragma once

#include <memory>
#include <string>
#include <string_view>

/// The console, or terminal, that a program was started from.
namespace kelvara::qt {

/// Makes a write to a pipe fail, instead of ending the program, when the pipe's reader has gone.
void OutliveReaders();

/// Prepares the standard streams of a console program, and its console if it has one, for as long
/// as the result exists: bytes pass unchanged, and text is UTF-8.
std::shared_ptr<void> PrepareConsole();

/// Whether standard error is a terminal on which a line can be updated in place.
bool IsErrorTerminal();

/// Lets a program with windows print to the console that it was started from, for as long as the
/// result exists, unless its output goes to a file or a pipe.
std::shared_ptr<void> JoinConsole();

/// Prints a line on standard error. A program with windows that has neither a stream nor a console,
/// as one started by a shortcut on Windows, shows it in a message box with the title.
void PrintError(std::string_view line, const char* title);

/// A message, which may name paths, in the console's character set.
std::string ConsoleText(std::string_view text);

}  // namespace kelvara::qt
