#pragma once

#include <windows.h>

#include <QString>
#include <array>
#include <stdexcept>
#include <string>

namespace kelvara::test {

/// A second process of the test's own program, which runs one of its disabled tests. The
/// environment variable KELVARA_TEST_FOLDER tells the test where to work.
class OwnProcess {
 public:
  OwnProcess(const std::wstring& disabledTest, const QString& folder) {
    std::array<wchar_t, MAX_PATH> program{};
    ::GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    std::wstring line = L"\"" + std::wstring(program.data()) +
                        L"\" --gtest_also_run_disabled_tests --gtest_filter=" + disabledTest;
    ::SetEnvironmentVariableW(L"KELVARA_TEST_FOLDER", folder.toStdWString().c_str());
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                         &startup, &process_) == 0) {
      throw std::runtime_error("no second process");
    }
  }
  ~OwnProcess() {
    Kill();
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
  }
  OwnProcess(const OwnProcess&) = delete;
  OwnProcess& operator=(const OwnProcess&) = delete;

  /// The folder, in the second process; empty in the first.
  static QString Folder() { return qEnvironmentVariable("KELVARA_TEST_FOLDER"); }

  bool IsRunning() const { return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }

  /// Ends the process with no chance to clean up.
  void Kill() {
    ::TerminateProcess(process_.hProcess, 1);
    ::WaitForSingleObject(process_.hProcess, INFINITE);
  }

 private:
  PROCESS_INFORMATION process_{};
};

}  // namespace kelvara::test
