#include "platform/qt/OpenPath.h"

#include "platform/qt/PathText.h"

namespace kelvara::qt {

QString OpenPath(QFile& file, const std::string& path, QIODevice::OpenMode mode) {
  file.setFileName(MachinePath(path));
  return file.open(mode | QIODevice::Unbuffered) ? QString() : file.errorString();
}

bool IsInFolder(const QFile& /*file*/) { return true; }

}  // namespace kelvara::qt
