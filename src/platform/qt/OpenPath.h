#pragma once

#include <QFile>
#include <string>

namespace kelvara::qt {

/// Opens a path for reading, writing or appending, without a buffer of Qt's. Returns why it cannot
/// be opened, empty if it is open.
QString OpenPath(QFile& file, const std::string& path, QIODevice::OpenMode mode);

/// Whether an open file is in a folder. If it has been removed from there, what is written to it
/// is lost when it is closed. On Windows, an open file cannot be removed.
bool IsInFolder(const QFile& file);

}  // namespace kelvara::qt
