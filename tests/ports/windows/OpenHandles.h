#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace kelvara::test {

/// How many handles this process has open, from the system's list of all handles: where Wine runs
/// the tests, `GetProcessHandleCount` is always 0.
inline std::ptrdiff_t OpenHandles() {
  struct Entry {
    USHORT process;
    USHORT unused;
    UCHAR type;
    UCHAR attributes;
    USHORT handle;
    void* object;
    ULONG access;
  };
  constexpr auto kHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  // The number of entries, aligned as the first of them.
  constexpr std::size_t kHeaderBytes = sizeof(void*);
  std::vector<unsigned char> list(std::size_t{1} << 24U);
  ULONG size = 0;
  ULONG count = 0;
  if (::NtQuerySystemInformation(kHandleInformation, list.data(), static_cast<ULONG>(list.size()),
                                 &size) < 0) {
    ADD_FAILURE() << "no list of handles";
    return -1;
  }
  std::memcpy(&count, list.data(), sizeof count);
  std::vector<Entry> entries(count);
  std::memcpy(entries.data(), list.data() + kHeaderBytes, count * sizeof(Entry));
  const auto self = static_cast<USHORT>(::GetCurrentProcessId());
  return std::count_if(entries.begin(), entries.end(),
                       [self](const Entry& entry) { return entry.process == self; });
}

}  // namespace kelvara::test
