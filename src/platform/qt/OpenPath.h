#pragma once

#include <QFile>
#include <string>

namespace kelvara::qt {

/// Opens a path for reading, writing or appending, without a buffer of Qt's. Returns why it cannot
/// be opened, empty if it is open.
QString OpenPath(QFile& file, const std::string& path, QIODevice::OpenMode mode);

}  // namespace kelvara::qt
