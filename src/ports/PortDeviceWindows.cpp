#include "ports/PortDeviceWindows.h"

#include <QDir>
#include <QFileInfo>
#include <QString>
#include <array>

#include "platform/qt/Text.h"

namespace kelvara::ports {
namespace {

/// ERROR_NO_SUCH_DEVICE, which not every compiler's headers declare.
constexpr DWORD kNoSuchDevice = 433;

/// The number of the process that holds a port, in memory that all programs of a user can find by
/// the port's name. The memory is gone when its last handle is closed, also that of a killed
/// program.
class HolderRecord {
 public:
  /// Finds the record; none if the port is not held.
  static HolderRecord Find(const std::string& device) {
    return HolderRecord(
        UniqueHandle(::OpenFileMappingW(FILE_MAP_READ, FALSE, NameOf(device).c_str())));
  }

  /// Makes the record for this process; none if another one exists.
  static HolderRecord Make(const std::string& device) {
    UniqueHandle memory(::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                             sizeof(DWORD), NameOf(device).c_str()));
    if (::GetLastError() == ERROR_ALREADY_EXISTS) {
      memory.reset();
    }
    HolderRecord record(std::move(memory));
    record.View(FILE_MAP_WRITE, [](DWORD& process) { process = ::GetCurrentProcessId(); });
    return record;
  }

  explicit operator bool() const { return memory_ != nullptr; }

  DWORD Process() const {
    DWORD found = 0;
    View(FILE_MAP_READ, [&found](const DWORD& process) { found = process; });
    return found;
  }

  HANDLE Release() { return memory_.release(); }

 private:
  explicit HolderRecord(UniqueHandle memory) : memory_(std::move(memory)) {}

  static std::wstring NameOf(const std::string& device) {
    return (QStringLiteral("Local\\Kelvara port ") +
            qt::ToQString(device).replace(QLatin1Char('\\'), QLatin1Char('/')))
        .toStdWString();
  }

  template <typename Use>
  void View(DWORD access, const Use& use) const {
    void* const view =
        memory_ ? ::MapViewOfFile(memory_.get(), access, 0, 0, sizeof(DWORD)) : nullptr;
    if (view != nullptr) {
      use(*static_cast<DWORD*>(view));
      ::UnmapViewOfFile(view);
    }
  }

  UniqueHandle memory_;
};

/// "NAME, process NUMBER", or "process NUMBER" if the name is unknown.
std::string NameOfProcess(DWORD number) {
  std::array<wchar_t, 1024> path{};
  auto size = static_cast<DWORD>(path.size());
  const UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, number));
  std::string text;
  if (process && ::QueryFullProcessImageNameW(process.get(), 0, path.data(), &size) != 0) {
    text = qt::ToText(QFileInfo(QString::fromWCharArray(path.data())).fileName()) + ", ";
  }
  return text + "process " + std::to_string(number);
}

PortFinding HeldBy(DWORD process, const std::string& device) {
  return process == ::GetCurrentProcessId()
             ? FindingOf(PortState::HeldHere, device)
             : FindingOf(PortState::HeldElsewhere, device, NameOfProcess(process));
}

/// Whether the system knows a device by this name, which a file's path never is.
bool IsDefined(const std::string& device) {
  std::array<wchar_t, 1024> target{};
  if (device.empty() || device.find_first_of("\\/") != std::string::npos) {
    return false;
  }
  const std::wstring name = qt::ToQString(device).toStdWString();
  if (::QueryDosDeviceW(name.c_str(), target.data(), static_cast<DWORD>(target.size())) != 0 ||
      ::GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
    return true;
  }
  // Wine lists only the ports that it found when it started, but for every device's name it refuses
  // attributes in this way. On Windows, a name that is not listed leads to no device.
  return ::GetFileAttributesW((L"\\\\.\\" + name).c_str()) == INVALID_FILE_ATTRIBUTES &&
         ::GetLastError() == ERROR_INVALID_PARAMETER;
}

}  // namespace

std::string TextOfError(DWORD error) {
  QString text = qt_error_string(static_cast<int>(error)).trimmed();
  // The text becomes part of a sentence.
  if (text.endsWith(QLatin1Char('.'))) {
    text.chop(1);
  }
  return qt::ToText(text);
}

PortFinding FindingOfError(DWORD error, const std::string& device) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DEV_NOT_EXIST:
    case kNoSuchDevice:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_DEVICE_REMOVED:
      return FindingOf(PortState::Absent, device);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
      return FindingOf(PortState::HeldElsewhere, device);
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE:
    case ERROR_NOT_SUPPORTED:
      return FindingOf(PortState::NotAPort, device);
    default:
      return {PortState::Dead, TextOfError(error)};
  }
}

PortFinding LookAt(const std::string& device) {
  const std::string followed = FollowLinks(device);
  if (!IsDefined(followed)) {
    return FindingOf(PortState::Absent, followed);
  }
  if (const HolderRecord holder = HolderRecord::Find(followed)) {
    return HeldBy(holder.Process(), followed);
  }
  return FindingOf(PortState::Free, followed);
}

PortLock::~PortLock() {
  if (handle_ >= 0) {
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
  }
}

PortFinding PortLock::Take(const std::string& device) {
  PortFinding finding = LookAt(device);
  if (finding.state != PortState::Free) {
    return finding;
  }
  HolderRecord record = HolderRecord::Make(device);
  if (!record) {
    return FindingOf(PortState::HeldElsewhere, device);
  }
  handle_ = reinterpret_cast<std::intptr_t>(record.Release());
  return finding;
}

std::string FollowLinks(const std::string& device) {
  const bool isLong = device.starts_with("\\\\.\\") || device.starts_with("\\\\?\\");
  return qt::ToText(qt::ToQString(isLong ? device.substr(4) : device).toUpper());
}

}  // namespace kelvara::ports
