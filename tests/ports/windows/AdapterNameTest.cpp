#include "ports/AdapterName.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <devguid.h>
#include <setupapi.h>

#include <string>

namespace kelvara::test {
namespace {

/// A port device in the system's list, without hardware. Making one needs an administrator.
class ListedPort {
 public:
  ListedPort(const std::wstring& port, const std::wstring& name) {
    entry_.cbSize = sizeof entry_;
    isMade_ =
        ::SetupDiCreateDeviceInfoW(list_, L"KELVARATEST", &GUID_DEVCLASS_PORTS, nullptr, nullptr,
                                   DICD_GENERATE_ID, &entry_) != FALSE &&
        (name.empty() || ::SetupDiSetDeviceRegistryPropertyW(list_, &entry_, SPDRP_FRIENDLYNAME,
                                                             Bytes(name), SizeOf(name)) != FALSE) &&
        ::SetupDiRegisterDeviceInfo(list_, &entry_, 0, nullptr, nullptr, nullptr) != FALSE &&
        NamePort(port);
  }
  ~ListedPort() {
    ::SetupDiRemoveDevice(list_, &entry_);
    ::SetupDiDestroyDeviceInfoList(list_);
  }
  ListedPort(const ListedPort&) = delete;
  ListedPort& operator=(const ListedPort&) = delete;

  bool IsMade() const { return isMade_; }

 private:
  static const BYTE* Bytes(const std::wstring& text) {
    return reinterpret_cast<const BYTE*>(text.c_str());
  }
  static DWORD SizeOf(const std::wstring& text) {
    return static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  }

  bool NamePort(const std::wstring& port) {
    const HKEY key =
        ::SetupDiCreateDevRegKeyW(list_, &entry_, DICS_FLAG_GLOBAL, 0, DIREG_DEV, nullptr, nullptr);
    if (key == INVALID_HANDLE_VALUE) {
      return false;
    }
    const LSTATUS failure =
        ::RegSetValueExW(key, L"PortName", 0, REG_SZ, Bytes(port), SizeOf(port));
    ::RegCloseKey(key);
    return failure == ERROR_SUCCESS;
  }

  HDEVINFO list_ = ::SetupDiCreateDeviceInfoList(&GUID_DEVCLASS_PORTS, nullptr);
  SP_DEVINFO_DATA entry_{};
  bool isMade_ = false;
};

TEST(AdapterNameTest, IsTheSystemsNameWithoutThePort) {
  const ListedPort other(L"COM8", L"Another Adapter (COM8)");
  const ListedPort adapter(L"COM88", L"Example  USB Serial Port (COM88)");
  const ListedPort nameless(L"COM89", L"");
  const ListedPort plain(L"COM90", L"Example Port");
  ASSERT_TRUE(other.IsMade() && adapter.IsMade() && nameless.IsMade() && plain.IsMade())
      << "this test must run as an administrator";
  EXPECT_EQ(ports::AdapterName("COM88"), "Example USB Serial Port");
  EXPECT_EQ(ports::AdapterName("\\\\.\\com88"), "Example USB Serial Port");
  EXPECT_EQ(ports::AdapterName("COM8"), "Another Adapter");
  EXPECT_EQ(ports::AdapterName("COM89"), "");
  EXPECT_EQ(ports::AdapterName("COM90"), "Example Port");
  EXPECT_EQ(ports::AdapterName("COM91"), "");
  EXPECT_EQ(ports::AdapterName(""), "");
}

}  // namespace
}  // namespace kelvara::test
