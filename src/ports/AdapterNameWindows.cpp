#include <windows.h>

#include <devguid.h>
#include <setupapi.h>

#include <QString>
#include <array>

#include "platform/qt/Text.h"
#include "ports/AdapterName.h"
#include "ports/PortDevice.h"

namespace kelvara::ports {
namespace {

using Text = std::array<wchar_t, 256>;

/// The list of the ports whose hardware is present.
class PresentPorts {
 public:
  PresentPorts() = default;
  ~PresentPorts() {
    if (list_ != INVALID_HANDLE_VALUE) {
      ::SetupDiDestroyDeviceInfoList(list_);
    }
  }
  PresentPorts(const PresentPorts&) = delete;
  PresentPorts& operator=(const PresentPorts&) = delete;

  /// The system's name for the port with this name; empty if there is none.
  QString NameOf(const QString& port) const {
    SP_DEVINFO_DATA entry{};
    entry.cbSize = sizeof entry;
    for (DWORD index = 0; ::SetupDiEnumDeviceInfo(list_, index, &entry) != FALSE; ++index) {
      if (PortOf(entry).compare(port, Qt::CaseInsensitive) == 0) {
        return FriendlyNameOf(entry);
      }
    }
    return {};
  }

 private:
  QString PortOf(SP_DEVINFO_DATA& entry) const {
    const HKEY key =
        ::SetupDiOpenDevRegKey(list_, &entry, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) {
      return {};
    }
    Text text{};
    DWORD bytes = sizeof text;
    const LSTATUS failure =
        ::RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    ::RegCloseKey(key);
    return failure == ERROR_SUCCESS ? QString::fromWCharArray(text.data()) : QString();
  }

  QString FriendlyNameOf(SP_DEVINFO_DATA& entry) const {
    Text text{};
    // The last character stays the terminator.
    const BOOL found = ::SetupDiGetDeviceRegistryPropertyW(
        list_, &entry, SPDRP_FRIENDLYNAME, nullptr, reinterpret_cast<BYTE*>(text.data()),
        static_cast<DWORD>(sizeof text - sizeof(wchar_t)), nullptr);
    return found != FALSE ? QString::fromWCharArray(text.data()) : QString();
  }

  HDEVINFO list_ = ::SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
};

}  // namespace

std::string AdapterName(const std::string& device) {
  const QString port = qt::ToQString(FollowLinks(device));
  QString name = PresentPorts().NameOf(port);
  // The system adds the port's name, which the user knows already.
  const QString suffix = QStringLiteral("(%1)").arg(port);
  if (name.endsWith(suffix, Qt::CaseInsensitive)) {
    name.chop(suffix.size());
  }
  return qt::ToText(name.simplified());
}

}  // namespace kelvara::ports
