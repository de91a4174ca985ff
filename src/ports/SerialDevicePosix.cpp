#include <QFile>
#include <QSerialPort>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/PortSettings.h"
#include "ports/SerialDevice.h"

namespace kelvara::ports {
namespace {

bool IsFailure(QSerialPort::SerialPortError error) {
  constexpr std::array kHarmless{QSerialPort::NoError, QSerialPort::NotOpenError,
                                 QSerialPort::TimeoutError, QSerialPort::UnsupportedOperationError};
  return std::find(kHarmless.begin(), kHarmless.end(), error) == kHarmless.end();
}

class PosixSerialDevice : public SerialDevice {
 public:
  PosixSerialDevice(std::function<void()> arrived, std::function<void()> failed) {
    device_.setReadBufferSize(static_cast<qint64>(platform::kInputBufferBytes));
    QObject::connect(&device_, &QSerialPort::readyRead, &device_, std::move(arrived));
    QObject::connect(&device_, &QSerialPort::errorOccurred, &device_,
                     [failed = std::move(failed)](QSerialPort::SerialPortError error) {
                       if (IsFailure(error)) {
                         failed();
                       }
                     });
  }

  PortFinding Open(const std::string& device, std::int32_t rate) override {
    const QSignalBlocker failureIsReturned(device_);
    device_.setPortName(QFile::decodeName(device.c_str()));
    device_.setBaudRate(rate);
    device_.setDataBits(QSerialPort::Data8);
    device_.setParity(QSerialPort::NoParity);
    device_.setStopBits(QSerialPort::OneStop);
    device_.setFlowControl(QSerialPort::NoFlowControl);
    if (device_.open(QIODevice::ReadWrite)) {
      return FindingOf(PortState::Free, device);
    }
    if (device_.error() == QSerialPort::PermissionError) {
      // The device itself could be opened, so the lock file is the obstacle.
      return {PortState::HeldElsewhere,
              "in use by another program, or one that died left its lock file behind"};
    }
    return {PortState::Dead, device_.errorString().toStdString()};
  }

  void Close() override {
    const QSignalBlocker errorsNoLongerCount(device_);
    // Otherwise closing would wait until the queued text is sent.
    device_.clear();
    device_.close();
  }

  std::string SetRate(std::int32_t rate) override {
    const QSignalBlocker refusalIsNoFailure(device_);
    return device_.setBaudRate(rate) ? std::string() : device_.errorString().toStdString();
  }

  void SetBreak(bool asserted) override {
    const QSignalBlocker failureIsIgnored(device_);
    device_.setBreakEnabled(asserted);
  }

  std::size_t InputCount() const override {
    return static_cast<std::size_t>(device_.bytesAvailable());
  }

  std::string Input(std::size_t most) override {
    const std::size_t wanted = std::min(platform::kInputBufferBytes, most);
    return device_.read(static_cast<qint64>(wanted)).toStdString();
  }

  void DiscardInput() override {
    device_.clear(QSerialPort::Input);
    if (device_.isOpen()) {
      // A full buffer has stopped the reading, and only a read restarts it.
      device_.readAll();
    }
  }

  std::size_t OutputCount() const override {
    return static_cast<std::size_t>(device_.bytesToWrite());
  }

  void Output(std::string_view text) override {
    device_.write(text.data(), static_cast<qint64>(text.size()));
  }

  void DiscardOutput() override { device_.clear(QSerialPort::Output); }

 private:
  QSerialPort device_;
};

}  // namespace

std::unique_ptr<SerialDevice> SerialDevice::Create(std::function<void()> arrived,
                                                   std::function<void()> failed) {
  return std::make_unique<PosixSerialDevice>(std::move(arrived), std::move(failed));
}

}  // namespace kelvara::ports
