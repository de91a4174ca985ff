#include "link/ComPort.h"

#include "base/CheckedInteger.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"

namespace kelvara::link {
namespace {

constexpr std::string_view kDefaultComPort = "1";

}  // namespace

std::int16_t ComPort::GetComPort() const {
  return base::Round16(base::ReadWholeNumber(settings_.Read(kComPortKey, kDefaultComPort)));
}

std::int32_t ComPort::GetBaudRate() const {
  return base::Round32(
      base::ReadWholeNumber(settings_.Read(kBaudrateKey, std::to_string(platform::kUsualRate))));
}

void ComPort::OpenComPort(std::int16_t port) {
  MSComm1_.SetPortNumber(port);
  MSComm1_.SetSettings(platform::PortSettings(base::ToInt16(GetBaudRate())));
  MSComm1_.SetOpen(true);
  Show("COM" + std::to_string(port), std::to_string(GetBaudRate()));
}

void ComPort::SelectPort(int entryIndex, std::string_view rateText) {
  Close();
  const std::int16_t port = base::ToInt16(entryIndex + 1);
  MSComm1_.SetPortNumber(port);
  MSComm1_.SetOpen(true);
  TimerComPort_.SwitchOn();
  // The rate is applied to the port once it is open.
  const std::int32_t rate = base::Round32(base::ReadWholeNumber(rateText));
  MSComm1_.SetSettings(platform::PortSettings(rate));
  settings_.Write(kComPortKey, std::to_string(port));
  settings_.Write(kBaudrateKey, std::to_string(rate));
}

void ComPort::ShowPort() {
  if (IsOpen()) {
    Show("COM" + std::to_string(GetComPort()), std::to_string(GetBaudRate()));
  } else {
    Show("No Comms", "");
  }
}

void ComPort::Show(std::string port, std::string rate) {
  portText_ = std::move(port);
  rateText_ = std::move(rate);
  if (stateChanged_) {
    stateChanged_();
  }
}

void ComPort::Close() {
  if (IsOpen()) {
    MSComm1_.SetOpen(false);
  }
}

std::string CouldNotOpenText(std::int32_t port) {
  std::string text = "Could not open COM ";
  if (port >= 0) {
    text += ' ';
  }
  text += std::to_string(port);
  return text;
}

}  // namespace kelvara::link
