#pragma once

#include <QDBusConnection>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelvara::test {

/// One thing on the screen: a window, a field, a menu entry, a cell.
struct ScreenItem {
  QString path;  ///< Where the program keeps it.
  std::string role;
  std::string name;
};

/// Reads what one program shows.
class ScreenReader {
 public:
  ScreenReader(const QDBusConnection& connection, const QString& program)
      : connection_(connection), program_(program) {}

  /// Whether there is anyone who tells what is shown.
  bool IsAnswered() const;

  /// The program's windows that can be seen.
  std::vector<ScreenItem> Windows() const;

  /// Everything of this role, and name where one is asked for, within another thing, the nearest
  /// first.
  std::vector<ScreenItem> FindAll(const ScreenItem& within, const std::string& role,
                                  const std::optional<std::string>& name = {}) const;

  std::vector<ScreenItem> Children(const ScreenItem& item) const;

  /// The text of a field.
  std::string TextOf(const ScreenItem& field) const;

  int RowCount(const ScreenItem& table) const;

  /// The texts of a table's cells, row by row.
  std::vector<std::vector<std::string>> Table(const ScreenItem& table) const;

  /// Where it is on the screen, in pixels.
  QRect AreaOf(const ScreenItem& item) const;

  bool IsShowing(const ScreenItem& item) const;
  bool IsChecked(const ScreenItem& item) const;
  bool IsEnabled(const ScreenItem& item) const;

 private:
  ScreenItem ItemAt(const QString& path) const;
  bool HasState(const ScreenItem& item, unsigned state) const;
  QVariant Property(const QString& path, const char* interface, const char* name) const;
  QVariantList Call(const QString& path, const char* interface, const char* method,
                    const QVariantList& arguments = {}) const;

  QDBusConnection connection_;
  QString program_;
};

}  // namespace kelvara::test
