#include "ports/PortHolder.h"

#include <QCoreApplication>
#include <QFile>

#ifdef Q_OS_UNIX
#include <signal.h>

#include <cerrno>
#endif

namespace kelvara::ports {
namespace {

constexpr qint64 kMostBytes = 256;

QString NextLine(QFile& file) {
  return QString::fromLocal8Bit(file.readLine(kMostBytes)).trimmed();
}

/// The program's name as the system keeps it, cut to 15 characters, or empty.
QString ProgramOf(long process) {
  QFile file(QStringLiteral("/proc/%1/comm").arg(process));
  return file.open(QIODevice::ReadOnly) ? NextLine(file) : QString();
}

bool IsRunning([[maybe_unused]] long process) {
#ifdef Q_OS_UNIX
  return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
#else
  return false;
#endif
}

}  // namespace

std::optional<long> HolderOf(const std::string& device) {
  const QString devices = QStringLiteral("/dev/");
  QString name = QFile::decodeName(device.c_str());
  if (!name.startsWith(devices)) {
    return std::nullopt;
  }
  name = name.mid(devices.size()).replace(u'/', u'_');
  QFile file(QStringLiteral("/var/lock/LCK..") + name);
  if (!file.open(QIODevice::ReadOnly)) {
    return std::nullopt;
  }
  bool isNumber = false;
  const long process = NextLine(file).toLong(&isNumber);
  if (!isNumber || process <= 0 || !IsRunning(process)) {
    return std::nullopt;
  }
  // Many programs write their name too. Another name tells that the holder died and its number went
  // to a process that has nothing to do with the port.
  const QString program = NextLine(file);
  if (!program.isEmpty() && !program.startsWith(ProgramOf(process))) {
    return std::nullopt;
  }
  return process;
}

bool IsThisProcess(long process) { return process == QCoreApplication::applicationPid(); }

std::string NameOfProcess(long process) {
  const QString program = ProgramOf(process);
  std::string text = program.isEmpty() ? std::string() : program.toStdString() + ", ";
  text += "process ";
  text += std::to_string(process);
  return text;
}

}  // namespace kelvara::ports
