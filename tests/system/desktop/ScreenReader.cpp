#include "system/desktop/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace kelvara::test {
namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
constexpr const char* kComponent = "org.a11y.atspi.Component";
constexpr const char* kTable = "org.a11y.atspi.Table";
constexpr const char* kText = "org.a11y.atspi.Text";

// The numbers of an item's states.
constexpr unsigned kChecked = 4;
constexpr unsigned kEnabled = 8;
constexpr unsigned kShowing = 25;

constexpr int kPatienceMs = 5000;
constexpr unsigned kScreenCoordinates = 0;

const QString kRoot = QStringLiteral("/org/a11y/atspi/accessible/root");

/// The paths in an answer that lists items, each as a program and a path.
std::vector<QString> PathsIn(const QDBusArgument& answer) {
  std::vector<QString> paths;
  answer.beginArray();
  while (!answer.atEnd()) {
    QString program;
    QDBusObjectPath path;
    answer.beginStructure();
    answer >> program >> path;
    answer.endStructure();
    paths.push_back(path.path());
  }
  answer.endArray();
  return paths;
}

/// Whether to search one role of item for another. A table has too many cells, and menus contain
/// only entries.
bool MayHold(const std::string& outer, const std::string& inner) {
  return outer != "table" && (outer != "menu bar" || inner == "menu item");
}

}  // namespace

bool ScreenReader::IsAnswered() const { return !Call(kRoot, kAccessible, "GetRoleName").isEmpty(); }

std::vector<ScreenItem> ScreenReader::Windows() const {
  std::vector<ScreenItem> windows;
  for (const ScreenItem& window : Children({kRoot, "", ""})) {
    if (IsShowing(window)) {
      windows.push_back(window);
    }
  }
  return windows;
}

std::vector<ScreenItem> ScreenReader::FindAll(const ScreenItem& within, const std::string& role,
                                              const std::optional<std::string>& name) const {
  std::vector<ScreenItem> found;
  std::vector<ScreenItem> row = {within};
  while (!row.empty()) {
    std::vector<ScreenItem> next;
    for (const ScreenItem& item : row) {
      for (const ScreenItem& child : Children(item)) {
        if (child.role == role && (!name || child.name == *name)) {
          found.push_back(child);
        }
        if (MayHold(child.role, role)) {
          next.push_back(child);
        }
      }
    }
    row = next;
  }
  return found;
}

std::vector<ScreenItem> ScreenReader::Children(const ScreenItem& item) const {
  const QVariantList answer = Call(item.path, kAccessible, "GetChildren");
  std::vector<ScreenItem> children;
  if (!answer.isEmpty()) {
    for (const QString& path : PathsIn(answer[0].value<QDBusArgument>())) {
      children.push_back(ItemAt(path));
    }
  }
  return children;
}

std::string ScreenReader::TextOf(const ScreenItem& field) const {
  const QVariantList answer = Call(field.path, kText, "GetText", {0, -1});
  return answer.isEmpty() ? "" : answer[0].toString().toStdString();
}

int ScreenReader::RowCount(const ScreenItem& table) const {
  return Property(table.path, kTable, "NRows").toInt();
}

std::vector<std::vector<std::string>> ScreenReader::Table(const ScreenItem& table) const {
  const int rows = RowCount(table);
  const int columns = Property(table.path, kTable, "NColumns").toInt();
  std::vector<std::vector<std::string>> texts;
  for (int row = 0; row < rows; ++row) {
    texts.emplace_back();
    for (int column = 0; column < columns; ++column) {
      const QVariantList answer = Call(table.path, kTable, "GetAccessibleAt", {row, column});
      if (answer.isEmpty()) {
        return {};
      }
      QString program;
      QDBusObjectPath path;
      const auto cell = answer[0].value<QDBusArgument>();
      cell.beginStructure();
      cell >> program >> path;
      cell.endStructure();
      texts.back().push_back(Property(path.path(), kAccessible, "Name").toString().toStdString());
    }
  }
  return texts;
}

QRect ScreenReader::AreaOf(const ScreenItem& item) const {
  const QVariantList answer = Call(item.path, kComponent, "GetExtents", {kScreenCoordinates});
  QRect area;
  if (!answer.isEmpty()) {
    answer[0].value<QDBusArgument>() >> area;
  }
  return area;
}

bool ScreenReader::IsShowing(const ScreenItem& item) const { return HasState(item, kShowing); }

bool ScreenReader::IsChecked(const ScreenItem& item) const { return HasState(item, kChecked); }

bool ScreenReader::IsEnabled(const ScreenItem& item) const { return HasState(item, kEnabled); }

bool ScreenReader::HasState(const ScreenItem& item, unsigned state) const {
  const QVariantList answer = Call(item.path, kAccessible, "GetState");
  QList<uint> states;
  if (!answer.isEmpty()) {
    answer[0].value<QDBusArgument>() >> states;
  }
  return !states.isEmpty() && (states[0] >> state & 1U) != 0;
}

ScreenItem ScreenReader::ItemAt(const QString& path) const {
  const QVariantList role = Call(path, kAccessible, "GetRoleName");
  return {path, role.isEmpty() ? "" : role[0].toString().toStdString(),
          Property(path, kAccessible, "Name").toString().toStdString()};
}

QVariant ScreenReader::Property(const QString& path, const char* interface,
                                const char* name) const {
  const QVariantList answer = Call(path, "org.freedesktop.DBus.Properties", "Get",
                                   {QString::fromLatin1(interface), QString::fromLatin1(name)});
  return answer.isEmpty() ? QVariant() : answer[0].value<QDBusVariant>().variant();
}

QVariantList ScreenReader::Call(const QString& path, const char* interface, const char* method,
                                const QVariantList& arguments) const {
  QDBusMessage message = QDBusMessage::createMethodCall(
      program_, path, QString::fromLatin1(interface), QString::fromLatin1(method));
  message.setArguments(arguments);
  const QDBusMessage reply = connection_.call(message, QDBus::Block, kPatienceMs);
  return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

}  // namespace kelvara::test
