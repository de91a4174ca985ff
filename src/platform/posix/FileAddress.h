#pragma once

#include <QUrl>
#include <string>

namespace kelvara::posix {

/// The URL of a file. A relative path starts at the current folder.
QUrl AddressOf(const std::string& path);

/// The path in the URL of a file, byte for byte.
std::string LocalPath(const QUrl& address);

}  // namespace kelvara::posix
