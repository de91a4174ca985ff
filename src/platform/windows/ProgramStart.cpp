#include "platform/qt/ProgramStart.h"

#include <windows.h>

#include <QString>

#include "base/Fault.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {

void StartProgram(const std::string& program, const std::string& argument) {
  // No path contains a quotation mark. A backslash before one would be taken with it.
  const std::wstring path = MachinePath(program).wstring();
  std::wstring command = L"\"" + path + L"\" \"" + MachinePath(argument).wstring();
  command += command.back() == L'\\' ? L"\\\"" : L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (::CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &started) == 0) {
    throw base::Fault(base::FaultKind::File,
                      "cannot start \"" + program +
                          "\": " + ToText(qt_error_string(static_cast<int>(::GetLastError()))));
  }
  ::CloseHandle(started.hThread);
  ::CloseHandle(started.hProcess);
}

}  // namespace kelvara::qt
