#include "sim/Beltpack.h"

#include <algorithm>
#include <utility>

#include "link/BeltpackCommands.h"
#include "sim/LineDamage.h"
#include "sim/RfpsReportText.h"

namespace kelvara::sim {
namespace {

constexpr char kCommandEnd = '\r';
constexpr char kLineFeed = '\n';
constexpr char kBreak = '\0';
constexpr std::size_t kMaxCommandBytes = 64;
constexpr std::size_t kMaxWaitingAnswers = 4;
constexpr int kDeafCommands = 3;
constexpr std::int64_t kMicrosecondsPerMs = 1000;
constexpr std::int64_t kMicrosecondsPerSecond = 1000000;
/// Slow enough for each character to arrive alone, fast enough for a whole report within three
/// seconds.
constexpr std::int64_t kSlowMicrosecondsPerByte = 2500;
/// The most that is taken at once, however much time has passed.
constexpr std::int64_t kMaxFloodBytes = std::int64_t{64} << 10U;

std::int64_t ToMicroseconds(std::int64_t milliseconds) { return milliseconds * kMicrosecondsPerMs; }

std::int64_t ToMsUpwards(std::int64_t microseconds) {
  return (microseconds + kMicrosecondsPerMs - 1) / kMicrosecondsPerMs;
}

std::int64_t MicrosecondsPerByte(const BeltpackManner& manner) {
  return kMicrosecondsPerSecond / manner.bytesPerSecond;
}

}  // namespace

Beltpack::Beltpack(Site site, const BeltpackManner& manner)
    : manner_(manner), walk_(std::move(site), manner.seed), damage_(~manner.seed) {}

void Beltpack::Receive(std::string_view bytes, std::int64_t nowMs) {
  for (const char byte : bytes) {
    if (!IsPresent(nowMs)) {
      return;
    }
    if (byte == kCommandEnd) {
      TakeCommand(std::exchange(command_, {}), nowMs);
    } else if (byte != kLineFeed && byte != kBreak && command_.size() < kMaxCommandBytes) {
      command_ += byte;
    }
  }
}

std::string Beltpack::TakeOutput(std::int64_t nowMs) {
  if (!IsPresent(nowMs)) {
    return {};
  }
  awayUntilMs_.reset();
  const std::int64_t now = ToMicroseconds(nowMs);
  std::string output = line_.Take(now);
  output += TakeFlood(now);
  return output;
}

std::optional<std::int64_t> Beltpack::NextDue() const {
  if (isUnplugged_) {
    return std::nullopt;
  }
  if (awayUntilMs_) {
    return awayUntilMs_;
  }
  std::optional<std::int64_t> due = line_.NextDue();
  if (floodTaken_) {
    const std::int64_t floodDue = *floodTaken_ + MicrosecondsPerByte(manner_);
    due = due ? std::min(*due, floodDue) : floodDue;
  }
  return due ? std::optional(ToMsUpwards(*due)) : std::nullopt;
}

void Beltpack::SetFault(FaultRule rule) {
  faults_ = FaultSchedule(rule);
  held_.clear();
  deafCommands_ = 0;
  floodTaken_.reset();
}

void Beltpack::Unplug() {
  isUnplugged_ = true;
  ClearLine();
}

void Beltpack::Plug() {
  isUnplugged_ = false;
  awayUntilMs_.reset();
}

bool Beltpack::IsPresent(std::int64_t nowMs) const {
  return !isUnplugged_ && (!awayUntilMs_ || nowMs >= *awayUntilMs_);
}

void Beltpack::TakeCommand(const std::string& command, std::int64_t nowMs) {
  if (command.empty()) {
    return;
  }
  if (commandNotification_) {
    commandNotification_(command, nowMs);
  }
  if (line_.Waiting() >= kMaxWaitingAnswers) {
    return;
  }
  if (deafCommands_ > 0) {
    --deafCommands_;
    return;
  }
  floodTaken_.reset();
  Send(std::exchange(held_, {}), nowMs);
  Answer(AnswerTo(command), faults_.Next(), nowMs);
}

std::string Beltpack::AnswerTo(std::string_view command) {
  if (command == link::kRfpsCommand) {
    return RfpsReportText(walk_.Next());
  }
  if (command == link::kChoCommand || command == link::kBhoCommand) {
    std::string answer(command);
    answer += " ok\r\n";
    return answer;
  }
  return std::string(kUnknownCommandAnswer);
}

void Beltpack::Answer(std::string answer, LineFault fault, std::int64_t nowMs) {
  switch (fault) {
    case LineFault::None:
      Send(std::move(answer), nowMs);
      break;
    case LineFault::Silent:
      break;
    case LineFault::Disconnect:
      Send(std::string(kDisconnectAnswer), nowMs);
      deafCommands_ = kDeafCommands;
      break;
    case LineFault::Partial:
      Send(CutShort(std::move(answer), damage_), nowMs);
      break;
    case LineFault::Late:
      held_ = std::move(answer);
      break;
    case LineFault::Garbled:
      Send(Garbled(std::move(answer), damage_), nowMs);
      break;
    case LineFault::LostLineFeeds:
      Send(WithoutSomeLineFeeds(answer, damage_), nowMs);
      break;
    case LineFault::Flood:
      floodTaken_ = ToMicroseconds(nowMs + manner_.answerDelayMs);
      break;
    case LineFault::HangUp:
      ClearLine();
      awayUntilMs_ = nowMs + manner_.awayMs;
      break;
    case LineFault::Slow:
      line_.Send(std::move(answer), ToMicroseconds(nowMs + manner_.answerDelayMs),
                 std::max(kSlowMicrosecondsPerByte, MicrosecondsPerByte(manner_)));
      break;
  }
}

void Beltpack::Send(std::string text, std::int64_t nowMs) {
  line_.Send(std::move(text), ToMicroseconds(nowMs + manner_.answerDelayMs),
             MicrosecondsPerByte(manner_));
}

std::string Beltpack::TakeFlood(std::int64_t now) {
  if (!floodTaken_ || now < *floodTaken_) {
    return {};
  }
  const std::int64_t perByte = MicrosecondsPerByte(manner_);
  const std::int64_t due = (now - *floodTaken_) / perByte;
  floodTaken_ = due > kMaxFloodBytes ? now : *floodTaken_ + due * perByte;
  return AnyBytes(static_cast<std::size_t>(std::min(due, kMaxFloodBytes)), damage_);
}

void Beltpack::ClearLine() {
  line_.Clear();
  held_.clear();
  command_.clear();
  floodTaken_.reset();
  deafCommands_ = 0;
}

}  // namespace kelvara::sim
