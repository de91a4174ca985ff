#include "sim/DemoSerialPort.h"

#include <algorithm>

#include "base/Fault.h"

namespace kelvara::sim {

DemoSerialPort::DemoSerialPort(Beltpack& beltpack, const platform::Clock& clock,
                               platform::Timer& delivery)
    : beltpack_(beltpack), clock_(clock), delivery_(delivery) {
  delivery_.SetTick([this] { Deliver(); });
}

DemoSerialPort::~DemoSerialPort() {
  delivery_.SwitchOff();
  delivery_.SetTick({});
}

void DemoSerialPort::SetSettings(std::string_view settings) {
  rate_ = platform::ReadRate(settings);
}

void DemoSerialPort::SetOpen(bool open) {
  if (open == isOpen_) {
    return;
  }
  if (!open) {
    isOpen_ = false;
    isBreak_ = false;
    delivery_.SwitchOff();
    arrived_.clear();
    input_.clear();
    return;
  }
  if (!beltpack_.IsPresent(clock_.TickCount())) {
    throw base::Fault(base::FaultKind::Port, "the simulated beltpack is unplugged");
  }
  // What was sent while the port was closed is lost.
  beltpack_.TakeOutput(clock_.TickCount());
  isDeviceGone_ = false;
  isOpen_ = true;
  delivery_.SwitchOn();
}

void DemoSerialPort::DiscardInput() {
  if (isOpen_) {
    CollectDue();
  }
  arrived_.clear();
  input_.clear();
}

std::string DemoSerialPort::Input(std::size_t most) {
  std::string taken = input_.substr(0, most);
  input_.erase(0, taken.size());
  return taken;
}

void DemoSerialPort::Output(std::string_view text) {
  if (!isOpen_) {
    return;
  }
  CollectDue();
  if (!isDeviceGone_) {
    beltpack_.Receive(text, clock_.TickCount());
  }
}

void DemoSerialPort::RestoreDevice() {
  if (isDeviceGone_ && beltpack_.IsPresent(clock_.TickCount())) {
    beltpack_.TakeOutput(clock_.TickCount());
    isDeviceGone_ = false;
  }
}

void DemoSerialPort::CollectDue() {
  if (!beltpack_.IsPresent(clock_.TickCount())) {
    isDeviceGone_ = true;
  }
  if (!isDeviceGone_) {
    arrived_ += beltpack_.TakeOutput(clock_.TickCount());
  }
}

void DemoSerialPort::Deliver() {
  if (!isOpen_) {
    return;
  }
  CollectDue();
  // Delivers pieces that fit: bytes that arrived one by one do not overflow the buffer while the
  // program reads them, however late this tick is. The program may close the port, or let another
  // tick run, while it reads.
  while (isOpen_ && !arrived_.empty()) {
    const std::size_t space = platform::kInputBufferBytes - input_.size();
    if (space == 0) {
      arrived_.clear();
      return;
    }
    input_ += arrived_.substr(0, space);
    arrived_.erase(0, std::min(space, arrived_.size()));
    const auto notification = notification_;
    if (notification) {
      notification();
    }
  }
}

}  // namespace kelvara::sim
