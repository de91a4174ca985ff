#include "system/desktop/AccessibleBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <stdexcept>

#include "support/TextFile.h"
#include "system/desktop/ScreenReader.h"

namespace kelvara::test {
namespace {

/// A bus that starts no services, so that only what the test started is running.
constexpr const char* kConfiguration =
    "<busconfig><type>session</type><auth>EXTERNAL</auth><listen>unix:dir=FOLDER</listen>"
    "<policy context=\"default\"><allow send_destination=\"*\"/><allow receive_type=\"*\"/><allow "
    "own=\"*\"/></policy>"
    "</busconfig>";

}  // namespace

AccessibleBus::AccessibleBus(const std::string& folder)
    : daemon_(Daemon(folder)),
      address_(daemon_.ReadLine().value_or("")),
      connection_(QDBusConnection::connectToBus(QString::fromStdString(address_),
                                                QStringLiteral("accessible"))),
      registrar_(address_) {
  registrar_.moveToThread(&thread_);
  thread_.start();
  if (!connection_.registerVirtualObject(QStringLiteral("/org/a11y/bus"), &registrar_) ||
      !connection_.registerService(QStringLiteral("org.a11y.Bus"))) {
    throw std::runtime_error("no message bus: " + daemon_.Finish(Process::Duration(0)).errors);
  }
}

AccessibleBus::~AccessibleBus() {
  QDBusConnection::disconnectFromBus(connection_.name());
  thread_.quit();
  thread_.wait();
}

ProcessRequest AccessibleBus::Daemon(const std::string& folder) {
  std::string configuration = kConfiguration;
  const std::string placeholder = "FOLDER";
  configuration.replace(configuration.find(placeholder), placeholder.size(), folder);
  WriteTextFile(folder + "/bus.conf", configuration);
  ProcessRequest request;
  request.arguments = {KELVARA_DBUS_DAEMON, "--config-file=" + folder + "/bus.conf", "--nofork",
                       "--print-address=1"};
  request.folder = folder;
  return request;
}

std::optional<QString> AccessibleBus::NameOf(pid_t program) const {
  const QDBusConnectionInterface& bus = *connection_.interface();
  const QStringList names = bus.registeredServiceNames();
  for (const QString& name : names) {
    // A program has one connection to its session bus and another to expose what it shows.
    if (name.startsWith(u':') && bus.servicePid(name).value() == static_cast<uint>(program) &&
        ScreenReader(connection_, name).IsAnswered()) {
      return name;
    }
  }
  return {};
}

bool AccessibleBus::Registrar::handleMessage(const QDBusMessage& message,
                                             const QDBusConnection& connection) {
  if (message.member() == QStringLiteral("GetAddress")) {
    return connection.send(message.createReply(address_));
  }
  if (message.member() == QStringLiteral("Get")) {
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant(true)))));
  }
  return false;
}

}  // namespace kelvara::test
