#include "platform/qt/PathText.h"

#include <windows.h>

#include <QDir>
#include <QUrl>

#include "platform/windows/EscapedText.h"

namespace kelvara::qt {

QString QStringFromPath(std::string_view path) { return windows::Unescaped(path); }

std::string PathFromQString(const QString& path) {
  return windows::Escaped(QDir::toNativeSeparators(path));
}

std::string ChosenPath(const QString& path, const QUrl& /*address*/) {
  return PathFromQString(path);
}

std::filesystem::path MachinePath(std::string_view path) {
  return QDir::toNativeSeparators(QStringFromPath(path)).toStdWString();
}

bool IsSamePath(const std::filesystem::path& one, const std::filesystem::path& other) {
  constexpr int kWhole = -1;
  return ::CompareStringOrdinal(one.c_str(), kWhole, other.c_str(), kWhole, TRUE) == CSTR_EQUAL;
}

QString MessageText(std::string_view text) { return windows::Unescaped(text); }

}  // namespace kelvara::qt
