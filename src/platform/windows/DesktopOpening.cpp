#include "platform/qt/DesktopOpening.h"

#include <windows.h>

#include <shellapi.h>

#include <QCoreApplication>
#include <QDir>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

/// Up to this, the shell's result is an error.
constexpr std::intptr_t kLastError = 32;

bool Open(const std::wstring& target) {
  const std::wstring folder =
      QDir::toNativeSeparators(QCoreApplication::applicationDirPath()).toStdWString();
  const HINSTANCE result = ::ShellExecuteW(::GetActiveWindow(), L"open", target.c_str(), nullptr,
                                           folder.c_str(), SW_SHOWNORMAL);
  return reinterpret_cast<std::intptr_t>(result) > kLastError;
}

}  // namespace

// A relative path starts at the current folder, not at the working folder of what is started.
bool OpenDocument(const std::string& path) {
  std::error_code ignored;
  return Open(std::filesystem::absolute(MachinePath(path), ignored).wstring());
}

bool OpenAddress(const std::string& address) { return Open(ToQString(address).toStdWString()); }

}  // namespace kelvara::qt
