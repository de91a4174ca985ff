#include "ports/QtSerialPort.h"

#include <QFile>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <utility>

#include "base/Fault.h"

namespace kelvara::ports {
namespace {

constexpr qint64 kOutputCharacters = 512;

/// Why a device that could be locked could not be opened.
PortFinding FindingOf(const QSerialPort& device) {
  if (device.error() == QSerialPort::PermissionError) {
    // The device itself could be opened, so the lock file is the obstacle.
    return {PortState::HeldElsewhere,
            "in use by another program, or one that died left its lock file behind"};
  }
  return {PortState::Dead, device.errorString().toStdString()};
}

}  // namespace

QtSerialPort::QtSerialPort(const PortTable& ports) : ports_(ports) {
  device_.setReadBufferSize(static_cast<qint64>(platform::kInputBufferBytes));
  QObject::connect(&device_, &QSerialPort::readyRead, &device_, [this] { TakeArrival(); });
  QObject::connect(&device_, &QSerialPort::errorOccurred, &device_,
                   [this](QSerialPort::SerialPortError error) { TakeError(error); });
}

QtSerialPort::~QtSerialPort() { CloseDevice(); }

void QtSerialPort::SetSettings(std::string_view settings) {
  const std::int32_t rate = platform::ReadRate(settings);
  if (HasDevice()) {
    const QSignalBlocker refusalIsNoFailure(device_);
    if (!device_.setBaudRate(rate)) {
      throw base::Fault(base::FaultKind::Port,
                        "\"" + deviceName_ + "\" cannot take the settings \"" +
                            std::string(settings) + "\": " + device_.errorString().toStdString());
    }
  }
  rate_ = rate;
}

std::string QtSerialPort::Settings() const { return platform::PortSettings(rate_); }

void QtSerialPort::SetOpen(bool open) {
  if (open == open_) {
    return;
  }
  if (open) {
    deviceName_ = ports_.DeviceOf(portNumber_);
    OpenDevice();
  } else {
    CloseDevice();
    leftover_.clear();
    break_ = false;
  }
  open_ = open;
}

void QtSerialPort::OpenDevice() {
  const std::string device = FollowLinks(deviceName_);
  auto lock = std::make_unique<PortLock>(device);
  if (lock->Finding().state != PortState::Free) {
    Refuse(device, lock->Finding());
  }
  const QSignalBlocker failureIsThrown(device_);
  device_.setPortName(QFile::decodeName(device.c_str()));
  device_.setBaudRate(rate_);
  device_.setDataBits(QSerialPort::Data8);
  device_.setParity(QSerialPort::NoParity);
  device_.setStopBits(QSerialPort::OneStop);
  device_.setFlowControl(QSerialPort::NoFlowControl);
  if (!device_.open(QIODevice::ReadWrite)) {
    Refuse(device, FindingOf(device_));
  }
  lock_ = std::move(lock);
  refusedDevice_.clear();
  if (break_) {
    device_.setBreakEnabled(true);
  }
}

void QtSerialPort::Refuse(const std::string& device, PortFinding finding) {
  refusedDevice_ = LookAt(device).state == PortState::Free ? device : std::string();
  refusal_ = std::move(finding);
  throw base::Fault(base::FaultKind::Port,
                    "cannot open \"" + deviceName_ + "\": " + refusal_.reason);
}

std::string QtSerialPort::Describe(int port) const {
  try {
    const std::string name = ports_.DeviceOf(port);
    const std::string device = FollowLinks(name);
    PortFinding finding = LookAt(device);
    if (HasDevice() && device == FollowLinks(deviceName_)) {
      finding.state = PortState::HeldHere;
    } else if (finding.state == PortState::Free && device == refusedDevice_) {
      finding = refusal_;
    }
    return name + ": " + finding.Description();
  } catch (const base::Fault& fault) {
    return fault.what();
  }
}

void QtSerialPort::CloseDevice() {
  if (!HasDevice()) {
    return;
  }
  const QSignalBlocker errorsNoLongerCount(device_);
  // Otherwise closing would wait until the queued text is sent.
  device_.clear();
  device_.close();
  lock_.reset();
}

void QtSerialPort::TakeError(QSerialPort::SerialPortError error) {
  constexpr std::array kHarmless{QSerialPort::NoError, QSerialPort::NotOpenError,
                                 QSerialPort::TimeoutError, QSerialPort::UnsupportedOperationError};
  if (!HasDevice() || std::find(kHarmless.begin(), kHarmless.end(), error) != kHarmless.end()) {
    return;
  }
  {
    const QSignalBlocker oneErrorIsEnough(device_);
    const std::size_t space =
        platform::kInputBufferBytes - std::min(leftover_.size(), platform::kInputBufferBytes);
    leftover_ += device_.read(static_cast<qint64>(space)).toStdString();
  }
  CloseDevice();
  if (!leftover_.empty()) {
    TakeArrival();
  }
}

void QtSerialPort::SetBreak(bool asserted) {
  if (!open_ || asserted == break_) {
    return;
  }
  break_ = asserted;
  if (HasDevice()) {
    const QSignalBlocker failureIsIgnored(device_);
    device_.setBreakEnabled(asserted);
  }
}

std::size_t QtSerialPort::InputCount() const {
  return leftover_.size() + static_cast<std::size_t>(device_.bytesAvailable());
}

void QtSerialPort::DiscardInput() {
  if (HasDevice()) {
    device_.clear(QSerialPort::Input);
  }
  if (HasDevice()) {
    // A full buffer has stopped the reading, and only a read restarts it.
    device_.readAll();
  }
  leftover_.clear();
}

std::string QtSerialPort::Input(std::size_t most) {
  std::string input = leftover_.substr(0, most);
  leftover_.erase(0, input.size());
  if (HasDevice()) {
    const auto wanted = std::min(platform::kInputBufferBytes, most - input.size());
    input += device_.read(static_cast<qint64>(wanted)).toStdString();
  }
  charactersTaken_ += input.size();
  return input;
}

void QtSerialPort::Output(std::string_view text) {
  if (HasDevice()) {
    const qint64 space = std::max(kOutputCharacters - device_.bytesToWrite(), qint64{0});
    device_.write(text.data(), std::min(static_cast<qint64>(text.size()), space));
  }
}

void QtSerialPort::DiscardOutput() {
  if (HasDevice()) {
    device_.clear(QSerialPort::Output);
  }
}

void QtSerialPort::RestoreDevice() {
  if (!open_ || HasDevice()) {
    return;
  }
  try {
    OpenDevice();
  } catch (const base::Fault&) {
    // It is still gone.
  }
}

void QtSerialPort::SetReceiveNotification(std::function<void()> notification) {
  notification_ = std::move(notification);
  PostNotification();
}

void QtSerialPort::TakeArrival() {
  arrived_ = true;
  PostNotification();
}

void QtSerialPort::PostNotification() {
  if (notificationPosted_ || notifying_) {
    return;
  }
  notificationPosted_ = true;
  QMetaObject::invokeMethod(
      &device_, [this] { Notify(); }, Qt::QueuedConnection);
}

void QtSerialPort::Notify() {
  notificationPosted_ = false;
  if (!notification_ || InputCount() == 0) {
    return;
  }
  arrived_ = false;
  const std::size_t takenBefore = charactersTaken_;
  {
    const QScopedValueRollback running(notifying_, true);
    // A copy, because the notification may be replaced while it runs.
    const std::function<void()> notification = notification_;
    notification();
  }
  if (InputCount() > 0 && (arrived_ || charactersTaken_ != takenBefore)) {
    PostNotification();
  }
}

}  // namespace kelvara::ports
