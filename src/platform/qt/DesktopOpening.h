#pragma once

#include <string>

/// The desktop's "Open" action.
namespace kelvara::qt {

/// Opens a document, by its path, with the program registered for it. Returns false if the desktop
/// cannot.
bool OpenDocument(const std::string& path);

/// Opens a web address. Returns false if the desktop cannot.
bool OpenAddress(const std::string& address);

}  // namespace kelvara::qt
