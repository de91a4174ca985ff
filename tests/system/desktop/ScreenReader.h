#pragma once

#include <QDBusConnection>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelvara::test {

/// An item on the screen: a window, a field, a menu entry or a cell.
struct ScreenItem {
  QString path;  ///< Its object path on the bus.
  std::string role;
  std::string name;
};

/// Reads what one program shows, as a screen reader does.
class ScreenReader {
 public:
  ScreenReader(const QDBusConnection& connection, const QString& program)
      : connection_(connection), program_(program) {}

  /// Whether the program exposes what it shows.
  bool IsAnswered() const;

  /// The program's visible windows.
  std::vector<ScreenItem> Windows() const;

  /// All items within another that have this role and, if given, this name, the nearest first.
  std::vector<ScreenItem> FindAll(const ScreenItem& within, const std::string& role,
                                  const std::optional<std::string>& name = {}) const;

  std::vector<ScreenItem> Children(const ScreenItem& item) const;

  /// The text of a field.
  std::string TextOf(const ScreenItem& field) const;

  int RowCount(const ScreenItem& table) const;

  /// The texts of a table's cells, row by row.
  std::vector<std::vector<std::string>> Table(const ScreenItem& table) const;

  /// The item's area on the screen, in pixels.
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
