#include "ports/QtSerialPort.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

#include "base/Fault.h"

namespace kelvara::ports {
namespace {

constexpr std::size_t kOutputCharacters = 512;

}  // namespace

QtSerialPort::QtSerialPort(const PortTable& ports, AdapterNaming adapterName)
    : ports_(ports),
      adapterName_(std::move(adapterName)),
      device_(SerialDevice::Create([this] { TakeArrival(); }, [this] { TakeFailure(); })) {}

QtSerialPort::~QtSerialPort() { CloseDevice(); }

void QtSerialPort::SetSettings(std::string_view settings) {
  const std::int32_t rate = platform::ReadRate(settings);
  if (HasDevice()) {
    const std::string refusal = device_->SetRate(rate);
    if (!refusal.empty()) {
      throw base::Fault(base::FaultKind::Port, "\"" + deviceName_ +
                                                   "\" cannot take the settings \"" +
                                                   std::string(settings) + "\": " + refusal);
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
  if (PortFinding finding = device_->Open(device, rate_); finding.state != PortState::Free) {
    // With the lock, the device would look as if this program had it open.
    lock.reset();
    Refuse(device, std::move(finding));
  }
  lock_ = std::move(lock);
  refusedDevice_.clear();
  if (break_) {
    device_->SetBreak(true);
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
    const std::string adapter = adapterName_(device);
    return name + (adapter.empty() ? "" : " (" + adapter + ")") + ": " + finding.Description();
  } catch (const base::Fault& fault) {
    return fault.what();
  }
}

std::string QtSerialPort::PresentAdapter(int port) const {
  try {
    const std::string device = FollowLinks(ports_.DeviceOf(port));
    if (!LookAt(device).IsPresent()) {
      return {};
    }
    const std::string adapter = adapterName_(device);
    return adapter.empty() ? "device" : adapter;
  } catch (const base::Fault&) {
    return {};
  }
}

void QtSerialPort::CloseDevice() {
  if (HasDevice()) {
    device_->Close();
    lock_.reset();
  }
}

void QtSerialPort::TakeFailure() {
  if (!HasDevice()) {
    return;
  }
  // One failure is enough: reading what is left may fail again.
  const std::unique_ptr<PortLock> lock = std::move(lock_);
  const std::size_t space =
      platform::kInputBufferBytes - std::min(leftover_.size(), platform::kInputBufferBytes);
  leftover_ += device_->Input(space);
  device_->Close();
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
    device_->SetBreak(asserted);
  }
}

std::size_t QtSerialPort::InputCount() const { return leftover_.size() + device_->InputCount(); }

void QtSerialPort::DiscardInput() {
  if (HasDevice()) {
    device_->DiscardInput();
  }
  leftover_.clear();
}

std::string QtSerialPort::Input(std::size_t most) {
  std::string input = leftover_.substr(0, most);
  leftover_.erase(0, input.size());
  if (HasDevice()) {
    input += device_->Input(most - input.size());
  }
  charactersTaken_ += input.size();
  return input;
}

void QtSerialPort::Output(std::string_view text) {
  if (HasDevice()) {
    const std::size_t space =
        kOutputCharacters - std::min(device_->OutputCount(), kOutputCharacters);
    device_->Output(text.substr(0, space));
  }
}

void QtSerialPort::DiscardOutput() {
  if (HasDevice()) {
    device_->DiscardOutput();
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
      &notificationContext_, [this] { Notify(); }, Qt::QueuedConnection);
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
