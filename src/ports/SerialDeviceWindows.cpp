#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/PortSettings.h"
#include "platform/qt/Text.h"
#include "ports/OverlappedOperation.h"
#include "ports/PortDeviceWindows.h"
#include "ports/SerialDevice.h"

namespace kelvara::ports {
namespace {

/// What the system is asked to keep of what nobody has read or sent yet.
constexpr WORD kSystemInputBytes = 1024;
constexpr WORD kSystemOutputBytes = 512;
/// A read ends after this many bytes, or when the line has been silent for a moment after the
/// first: so the program hears within a few milliseconds of the end of an answer, and during a long
/// answer at 19200 baud every 33 ms.
constexpr std::size_t kReadBytes = 64;
constexpr DWORD kSilenceMilliseconds = 1;

/// The line as the program needs it. The control lines stay as the system or the last program left
/// them, except that none serves a handshake: such a line is held active.
DCB StateFor(const DCB& found, std::int32_t rate) {
  DCB state = found;
  state.BaudRate = static_cast<DWORD>(rate);
  state.ByteSize = 8;
  state.Parity = NOPARITY;
  state.StopBits = ONESTOPBIT;
  state.fBinary = TRUE;
  state.fParity = FALSE;
  state.fErrorChar = FALSE;
  state.fNull = FALSE;
  state.fAbortOnError = FALSE;
  state.fOutX = FALSE;
  state.fInX = FALSE;
  state.fOutxCtsFlow = FALSE;
  state.fOutxDsrFlow = FALSE;
  state.fDsrSensitivity = FALSE;
  // Unused without a handshake, but refused if they are larger than the buffer.
  state.XonLim = kSystemInputBytes / 4;
  state.XoffLim = kSystemInputBytes / 4;
  if (state.fDtrControl != DTR_CONTROL_DISABLE) {
    state.fDtrControl = DTR_CONTROL_ENABLE;
  }
  if (state.fRtsControl != RTS_CONTROL_DISABLE) {
    state.fRtsControl = RTS_CONTROL_ENABLE;
  }
  return state;
}

class WindowsSerialDevice : public SerialDevice {
 public:
  WindowsSerialDevice(std::function<void()> arrived, std::function<void()> failed)
      : arrived_(std::move(arrived)), failed_(std::move(failed)) {}
  ~WindowsSerialDevice() override { Close(); }
  WindowsSerialDevice(const WindowsSerialDevice&) = delete;
  WindowsSerialDevice& operator=(const WindowsSerialDevice&) = delete;

  PortFinding Open(const std::string& device, std::int32_t rate) override {
    // COM10 and above have no shorter name.
    const QString path = QStringLiteral("\\\\.\\") + qt::ToQString(device);
    const HANDLE opened = ::CreateFileW(path.toStdWString().c_str(), GENERIC_READ | GENERIC_WRITE,
                                        0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
      return FindingOfError(::GetLastError(), device);
    }
    handle_.reset(opened);
    if (const DWORD error = SetUp(rate); error != ERROR_SUCCESS) {
      Close();
      return FindingOfError(error, device);
    }
    return FindingOf(PortState::Free, device);
  }

  void Close() override {
    if (handle_) {
      ::ClearCommBreak(handle_.get());
      reading_.Watch(false);
      writing_.Watch(false);
      reading_.Cancel(handle_.get());
      // Otherwise closing would wait until the queued text is sent.
      DropOutput();
      handle_.reset();
    }
    input_.clear();
  }

  std::string SetRate(std::int32_t rate) override {
    const DWORD error = SetState(rate);
    return error == ERROR_SUCCESS ? std::string() : TextOfError(error);
  }

  void SetBreak(bool asserted) override {
    if (asserted) {
      ::SetCommBreak(handle_.get());
    } else {
      ::ClearCommBreak(handle_.get());
    }
  }

  std::size_t InputCount() const override { return input_.size(); }

  std::string Input(std::size_t most) override {
    std::string taken = input_.substr(0, most);
    input_.erase(0, taken.size());
    Read();
    return taken;
  }

  void DiscardInput() override {
    // The running read may hold input that has come already.
    reading_.Cancel(handle_.get());
    input_.clear();
    if (!Purge(PURGE_RXCLEAR)) {
      failed_();
      return;
    }
    Read();
  }

  std::size_t OutputCount() const override { return output_.size() + sent_.size(); }

  void Output(std::string_view text) override {
    output_ += text;
    Write();
  }

  void DiscardOutput() override {
    if (!DropOutput()) {
      failed_();
    }
  }

 private:
  DWORD SetUp(std::int32_t rate) {
    // A driver may have buffers of its own.
    ::SetupComm(handle_.get(), kSystemInputBytes, kSystemOutputBytes);
    if (const DWORD error = SetState(rate); error != ERROR_SUCCESS) {
      return error;
    }
    // Without a total limit, a read waits for its first byte as long as it takes, and a write until
    // the line has taken it.
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = kSilenceMilliseconds;
    if (::SetCommTimeouts(handle_.get(), &timeouts) == FALSE) {
      return ::GetLastError();
    }
    Purge(PURGE_RXCLEAR | PURGE_TXCLEAR);
    reading_.Watch(true);
    writing_.Watch(true);
    return BeginRead();
  }

  DWORD SetState(std::int32_t rate) {
    DCB found{};
    found.DCBlength = sizeof found;
    if (::GetCommState(handle_.get(), &found) == FALSE) {
      return ::GetLastError();
    }
    DCB wanted = StateFor(found, rate);
    return ::SetCommState(handle_.get(), &wanted) != FALSE ? ERROR_SUCCESS : ::GetLastError();
  }

  /// Reads on, unless the buffer is full: then the system keeps what comes.
  DWORD BeginRead() {
    const std::size_t space = platform::kInputBufferBytes - input_.size();
    const auto wanted = static_cast<DWORD>(std::min(space, kReadBytes));
    if (!handle_ || reading_.IsRunning() || wanted == 0) {
      return ERROR_SUCCESS;
    }
    return reading_.Begin([&](OVERLAPPED* overlapped) {
      return ::ReadFile(handle_.get(), piece_.data(), wanted, nullptr, overlapped);
    });
  }

  void Read() {
    if (BeginRead() != ERROR_SUCCESS) {
      failed_();
    }
  }

  void EndRead() {
    const std::optional<DWORD> count = CountAtEndOf(reading_);
    if (!count) {
      return;
    }
    // The reads of some devices that are gone succeed without a byte.
    if (*count == 0 && !Answers()) {
      failed_();
      return;
    }
    input_.append(piece_.data(), *count);
    if (*count > 0) {
      arrived_();
    }
    Read();
  }

  /// The bytes that an operation has carried; nothing if it goes on or has failed, of which
  /// `failed_` is told.
  std::optional<DWORD> CountAtEndOf(OverlappedOperation& operation) {
    DWORD count = 0;
    const DWORD error = operation.End(handle_.get(), count);
    if (error == ERROR_SUCCESS) {
      return count;
    }
    if (error != ERROR_IO_INCOMPLETE) {
      failed_();
    }
    return std::nullopt;
  }

  bool Answers() const {
    DWORD errors = 0;
    return ::ClearCommError(handle_.get(), &errors, nullptr) != FALSE;
  }

  void Write() {
    if (!handle_ || writing_.IsRunning() || output_.empty()) {
      return;
    }
    sent_ = std::exchange(output_, {});
    const DWORD error = writing_.Begin([&](OVERLAPPED* overlapped) {
      return ::WriteFile(handle_.get(), sent_.data(), static_cast<DWORD>(sent_.size()), nullptr,
                         overlapped);
    });
    if (error != ERROR_SUCCESS) {
      failed_();
    }
  }

  void EndWrite() {
    if (CountAtEndOf(writing_)) {
      sent_.clear();
      Write();
    }
  }

  /// False if the device has failed.
  bool DropOutput() {
    writing_.Cancel(handle_.get());
    output_.clear();
    sent_.clear();
    return Purge(PURGE_TXABORT | PURGE_TXCLEAR);
  }

  /// Empties the system's buffers, if the driver can. False if the device has failed.
  bool Purge(DWORD buffers) const {
    return ::PurgeComm(handle_.get(), buffers) != FALSE || Answers();
  }

  std::function<void()> arrived_;
  std::function<void()> failed_;
  UniqueHandle handle_;
  std::string input_;
  /// What the running read fills.
  std::array<char, kReadBytes> piece_{};
  std::string output_;
  /// What the running write sends.
  std::string sent_;
  OverlappedOperation reading_{[this] { EndRead(); }};
  OverlappedOperation writing_{[this] { EndWrite(); }};
};

}  // namespace

std::unique_ptr<SerialDevice> SerialDevice::Create(std::function<void()> arrived,
                                                   std::function<void()> failed) {
  return std::make_unique<WindowsSerialDevice>(std::move(arrived), std::move(failed));
}

}  // namespace kelvara::ports
