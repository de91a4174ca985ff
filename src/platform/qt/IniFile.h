#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

#include "platform/qt/IniText.h"

namespace kelvara::qt {

/// A settings file on disk.
class IniFile {
 public:
  /// `patience` is the longest time to wait for another program that is writing.
  IniFile(const QString& path, std::chrono::milliseconds patience);

  /// Returns the settings in the file: none if it is absent or cannot be read at the moment. A
  /// broken file (not a settings text, a folder, or not readable by the user) is set aside.
  IniText Read() const;

  /// Reads the settings, applies the change and replaces the file. After a power cut the file is
  /// the old one or the new one, complete. Programs that change it at the same time wait for each
  /// other. A file that cannot be changed is a file fault and stays as it was.
  void Change(const std::function<void(IniText&)>& change) const;

 private:
  /// Empty settings if there is no file, nothing if it is broken. A file that cannot be read at the
  /// moment is a file fault.
  std::optional<IniText> Load() const;
  bool SetAside() const;
  void Replace(const IniText& text) const;
  [[noreturn]] void ThrowFault(const QString& reason) const;

  QString path_;
  std::chrono::milliseconds patience_;
};

}  // namespace kelvara::qt
