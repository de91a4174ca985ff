#pragma once

#include <sys/types.h>

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QThread>
#include <optional>
#include <string>

#include "support/Process.h"

namespace kelvara::test {

/// A private message bus over which a program exposes what it shows, as it does to a screen reader.
class AccessibleBus {
 public:
  /// Starts the bus, with its files in `folder`.
  explicit AccessibleBus(const std::string& folder);
  ~AccessibleBus();
  AccessibleBus(const AccessibleBus&) = delete;
  AccessibleBus& operator=(const AccessibleBus&) = delete;

  /// The address to give a program as that of its session bus.
  const std::string& Address() const { return address_; }

  const QDBusConnection& Connection() const { return connection_; }

  /// The name under which a program exposes what it shows; empty until it does.
  std::optional<QString> NameOf(pid_t program) const;

 private:
  /// Tells programs that a screen reader is active, and the address of its bus.
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
  // Answers programs while the test's own thread waits.
  QThread thread_;
};

}  // namespace kelvara::test
