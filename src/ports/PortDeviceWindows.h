#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "ports/PortDevice.h"

namespace kelvara::ports {

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
/// A handle that is closed by the destructor; null for none.
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

/// Why a device could not be opened, from the system's error.
PortFinding FindingOfError(DWORD error, const std::string& device);

/// The system's own words for an error, in the user's language.
std::string TextOfError(DWORD error);

}  // namespace kelvara::ports
