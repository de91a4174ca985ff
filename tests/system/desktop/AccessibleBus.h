#pragma once

#include <sys/types.h>

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QThread>
#include <optional>
#include <string>

#include "support/Process.h"

namespace kelvara::test {

/// A message bus of the test's own, over which a program tells what it shows, as it does for the
/// aids of a user who cannot see it.
class AccessibleBus {
 public:
  /// Starts the bus; its files stand in the folder.
  explicit AccessibleBus(const std::string& folder);
  ~AccessibleBus();
  AccessibleBus(const AccessibleBus&) = delete;
  AccessibleBus& operator=(const AccessibleBus&) = delete;

  /// What a program is to be told as the address of its session's bus.
  const std::string& Address() const { return address_; }

  const QDBusConnection& Connection() const { return connection_; }

  /// The name under which a program tells what it shows; nothing as long as it does not.
  std::optional<QString> NameOf(pid_t program) const;

 private:
  /// Answers the programs that ask whether, and where, anyone listens.
  class Registrar : public QDBusVirtualObject {
   public:
    explicit Registrar(const std::string& address) : address_(QString::fromStdString(address)) {}
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

   private:
    QString address_;
  };

  static ProcessRequest Daemon(const std::string& folder);

  Process daemon_;
  std::string address_;
  QDBusConnection connection_;
  Registrar registrar_;
  // The test waits while programs ask.
  QThread thread_;
};

}  // namespace kelvara::test
