#include "platform/qt/Console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cstdio>
#include <iostream>

#include "platform/windows/EscapedText.h"

namespace kelvara::qt {
namespace {

/// Output to the console in UTF-8, and the escape sequences that update a line in place, for as
/// long as it exists. The console outlives the program, so its settings are restored.
class ConsoleSettings {
 public:
  ConsoleSettings() {
    characterSet = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
    hasScreen = ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &screenMode) != 0;
    if (hasScreen) {
      ::SetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE),
                       screenMode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
    ::SetConsoleCtrlHandler(RestoreAtEnd, TRUE);
  }
  ~ConsoleSettings() {
    ::SetConsoleCtrlHandler(RestoreAtEnd, FALSE);
    Restore();
  }
  ConsoleSettings(const ConsoleSettings&) = delete;
  ConsoleSettings& operator=(const ConsoleSettings&) = delete;

 private:
  static void Restore() {
    ::SetConsoleOutputCP(characterSet);
    if (hasScreen) {
      ::SetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), screenMode);
    }
  }

  /// Called before a key of the console ends the program.
  static BOOL WINAPI RestoreAtEnd(DWORD /*event*/) {
    Restore();
    return FALSE;
  }

  inline static UINT characterSet = 0;
  inline static bool hasScreen = false;
  inline static DWORD screenMode = 0;
};

/// Whether the program was started with a stream that leads somewhere.
bool IsConnected(DWORD stream) {
  const HANDLE handle = ::GetStdHandle(stream);
  return handle != nullptr && handle != INVALID_HANDLE_VALUE &&
         ::GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

/// The console that a program with windows was started from. The program lets go of it after each
/// message: closing the console, or pressing Ctrl+C in it, must not end a program that its user
/// sees as independent.
class JoinedConsole {
 public:
  JoinedConsole() {
    static const bool hasOutput = IsConnected(STD_OUTPUT_HANDLE);
    static const bool hasError = IsConnected(STD_ERROR_HANDLE);
    hasError_ = hasError;
    if ((hasOutput && hasError) || ::AttachConsole(ATTACH_PARENT_PROCESS) == 0) {
      return;
    }
    hasError_ = true;
    output_ = hasOutput ? nullptr : Reopen(stdout);
    error_ = hasError ? nullptr : Reopen(stderr);
    isAttached_ = true;
    characterSet_ = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
  }
  ~JoinedConsole() {
    if (!isAttached_) {
      return;
    }
    for (std::FILE* const stream : {output_, error_}) {
      if (stream != nullptr) {
        std::freopen("NUL", "w", stream);
      }
    }
    ::SetConsoleOutputCP(characterSet_);
    ::FreeConsole();
  }
  JoinedConsole(const JoinedConsole&) = delete;
  JoinedConsole& operator=(const JoinedConsole&) = delete;

  /// Whether standard error leads somewhere.
  bool HasError() const { return hasError_; }

 private:
  /// Leads a stream to the console. Its buffer keeps the bytes of a character together.
  static std::FILE* Reopen(std::FILE* stream) {
    constexpr std::size_t kBufferBytes = 4096;
    std::FILE* const opened = std::freopen("CONOUT$", "w", stream);
    if (opened != nullptr) {
      std::setvbuf(opened, nullptr, _IOFBF, kBufferBytes);
    }
    return opened;
  }

  bool isAttached_ = false;
  bool hasError_ = false;
  std::FILE* output_ = nullptr;
  std::FILE* error_ = nullptr;
  UINT characterSet_ = 0;
};

}  // namespace

// A write to a pipe without a reader only fails.
void OutliveReaders() {}

std::shared_ptr<void> PrepareConsole() {
  for (const int stream : {::_fileno(stdin), ::_fileno(stdout), ::_fileno(stderr)}) {
    // A console's own line ends and its end of input stay.
    if (::_isatty(stream) == 0) {
      ::_setmode(stream, _O_BINARY);
    }
  }
  return std::make_shared<ConsoleSettings>();
}

bool IsErrorTerminal() {
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0 &&
         (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::shared_ptr<void> JoinConsole() { return std::make_shared<JoinedConsole>(); }

void PrintError(std::string_view line, const char* title) {
  const JoinedConsole console;
  if (console.HasError()) {
    std::cerr << ConsoleText(line) << std::endl;
    return;
  }
  ::MessageBoxW(nullptr, windows::Unescaped(line).toStdWString().c_str(),
                QString::fromLatin1(title).toStdWString().c_str(), MB_OK | MB_ICONERROR);
}

std::string ConsoleText(std::string_view text) {
  return windows::Unescaped(text).toUtf8().toStdString();
}

}  // namespace kelvara::qt
