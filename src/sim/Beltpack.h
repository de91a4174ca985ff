#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "sim/FaultRule.h"
#include "sim/OutputLine.h"
#include "sim/Random.h"
#include "sim/Site.h"
#include "sim/SiteWalk.h"

namespace kelvara::sim {

/// What a beltpack sends for an unknown command, and when it disconnects.
inline constexpr std::string_view kUnknownCommandAnswer = "?\r\n";
inline constexpr std::string_view kDisconnectAnswer = "24\r\n";

/// How a beltpack behaves on the line.
struct BeltpackManner {
  /// The same seed gives the same walk, the same readings and the same damage.
  std::uint64_t seed = 1;
  /// The speed of the line: 19200 baud, ten bits to the byte. At least 1, at most a million.
  int bytesPerSecond = 1920;
  /// From a command's carriage return to the first bit of the answer.
  int answerDelayMs = 40;
  /// How long the device stays away after a hang-up.
  int awayMs = 10000;
};

/// A beltpack at the other end of a serial line: commands go in as bytes, answers come out when
/// they are due. It has no clock: every call passes the time, in milliseconds from any fixed
/// moment, which never runs backwards.
class Beltpack {
 public:
  explicit Beltpack(Site site, const BeltpackManner& manner = {});

  /// Takes bytes off the line. "rfps" with a carriage return is answered by a report of 29 lines,
  /// "cho" and "bho" by a line, anything else by "?"; a carriage return alone, line feeds and the
  /// zero bytes of a break get no answer. While four answers are waiting to be sent, commands are
  /// ignored.
  void Receive(std::string_view bytes, std::int64_t nowMs);

  /// The bytes that have been sent and not taken yet.
  std::string TakeOutput(std::int64_t nowMs);

  /// When to call next for output, or to find a vanished device back; nothing while nothing is due.
  std::optional<std::int64_t> NextDue() const;

  /// Sets the line's fault from the next answer on. An answer that a fault held back is dropped,
  /// and a flood ends; a device that is away stays away.
  void SetFault(FaultRule rule);

  /// Pulls the cable: the device is gone, with what was on the line, until it is plugged in.
  void Unplug();

  /// Plugs the cable in; also brings back a device that hung up.
  void Plug();

  /// Whether the machine sees the device. While it does not, nothing goes in and nothing comes out.
  bool IsPresent(std::int64_t nowMs) const;

  /// Sets what is called with every command that the beltpack receives, answered or not.
  void SetCommandNotification(std::function<void(std::string_view, std::int64_t)> notification) {
    commandNotification_ = std::move(notification);
  }

 private:
  void TakeCommand(const std::string& command, std::int64_t nowMs);
  std::string AnswerTo(std::string_view command);
  void Answer(std::string answer, LineFault fault, std::int64_t nowMs);
  void Send(std::string text, std::int64_t nowMs);
  std::string TakeFlood(std::int64_t now);
  void ClearLine();

  BeltpackManner manner_;
  SiteWalk walk_;
  Random damage_;
  OutputLine line_;
  FaultSchedule faults_;
  std::function<void(std::string_view, std::int64_t)> commandNotification_;
  std::string command_;
  /// A late answer, until the next command.
  std::string held_;
  int deafCommands_ = 0;
  /// The time up to which the flood has been taken, in microseconds; nothing while there is none.
  std::optional<std::int64_t> floodTaken_;
  bool isUnplugged_ = false;
  std::optional<std::int64_t> awayUntilMs_;
};

}  // namespace kelvara::sim
