#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/PortSettings.h"
#include "platform/SerialPort.h"
#include "platform/SettingsStore.h"
#include "platform/Timer.h"

namespace kelvara::link {

/// Where the port number and the rate are stored.
inline constexpr std::string_view kComPortKey = "ComPort";
inline constexpr std::string_view kBaudrateKey = "Baudrate";

/// Which serial port is used and at what rate: stored between runs, opened at start-up, changed in
/// the port dialog.
class ComPort {
 public:
  ComPort(platform::SerialPort& MSComm1, platform::Timer& TimerComPort,
          platform::SettingsStore& settings)
      : MSComm1_(MSComm1), TimerComPort_(TimerComPort), settings_(settings) {}

  /// The stored port number, 1 when nothing is stored.
  std::int16_t GetComPort() const;

  /// The stored rate in baud, 19200 when nothing is stored.
  std::int32_t GetBaudRate() const;

  /// Opens the port at start-up, at the stored rate. The rate is taken as a 16-bit integer here, so
  /// 38400 and 57600 are overflow faults; a port that cannot be opened is a port fault.
  void OpenComPort(std::int16_t port);

  /// What OK does in the port dialog: closes the port, opens entry `entryIndex` + 1 at the rate
  /// typed, switches `TimerComPort` on and stores both. A fault stops it at that step; nothing is
  /// stored then.
  void SelectPort(int entryIndex, std::string_view rateText);

  /// Sets the status bar's texts to the stored port and rate if the port is open, else to "No
  /// Comms" and an empty rate.
  void ShowPort();

  /// The status bar's texts for the port and its rate.
  const std::string& PortText() const { return portText_; }
  const std::string& RateText() const { return rateText_; }

  /// Sets what is called when these texts may have changed.
  void SetStateChanged(std::function<void()> stateChanged) {
    stateChanged_ = std::move(stateChanged);
  }

  /// Closes the port if it is open.
  void Close();

  bool IsOpen() const { return MSComm1_.IsOpen(); }

  /// The number of the port that was last to be opened, which may not be stored.
  std::int16_t PortNumber() const { return MSComm1_.PortNumber(); }

 private:
  void Show(std::string port, std::string rate);

  platform::SerialPort& MSComm1_;
  platform::Timer& TimerComPort_;
  platform::SettingsStore& settings_;
  std::string portText_;
  std::string rateText_;
  std::function<void()> stateChanged_;
};

/// The message for a port that cannot be opened. A non-negative number has a leading blank of its
/// own, so that two blanks precede it.
std::string CouldNotOpenText(std::int32_t port);

}  // namespace kelvara::link
