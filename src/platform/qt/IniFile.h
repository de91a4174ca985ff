#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

#include "platform/qt/IniText.h"

namespace kelvara::qt {

/// A settings file on the disk.
class IniFile {
 public:
  /// `patience`: how long at most to wait for another program that is writing.
  IniFile(const QString& path, std::chrono::milliseconds patience);

  /// What the file holds: no settings when it is absent or cannot be read now. A broken file (no
  /// settings text, a folder, one that the user may not read) is set aside.
  IniText Read() const;

  /// Changes what the file holds: read, changed and in its place when this returns; after a power
  /// cut it is the old file or the new one, whole. Two programs that change it wait for each other.
  /// A file that cannot be changed is a file fault and stays as it was.
  void Change(const std::function<void(IniText&)>& change) const;

 private:
  /// No settings when there is no file, nothing when it is broken. A file that cannot be read now
  /// is a file fault.
  std::optional<IniText> Load() const;
  bool SetAside() const;
  void Replace(const IniText& text) const;
  [[noreturn]] void ThrowFault(const QString& reason) const;

  QString path_;
  std::chrono::milliseconds patience_;
};

}  // namespace kelvara::qt
