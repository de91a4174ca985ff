#include "platform/qt/ProgramArguments.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

#include "platform/qt/Text.h"
#include "platform/windows/EscapedText.h"

namespace kelvara::qt {

// The arguments of main() lack the characters that the machine's character set lacks.
std::vector<std::string> ProgramArguments(int /*argumentCount*/, char** /*arguments*/) {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> wide(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
  std::vector<std::string> arguments;
  for (int index = 1; wide && index < count; ++index) {
    arguments.push_back(windows::Escaped(QString::fromWCharArray(wide.get()[index])));
  }
  return arguments;
}

std::string TextOfArgument(const std::string& argument) {
  return ToText(windows::Unescaped(argument));
}

}  // namespace kelvara::qt
