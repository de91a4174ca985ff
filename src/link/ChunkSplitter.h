#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Timer.h"

namespace kelvara::link {

/// What the beltpack says on a line of its own when it disconnects.
inline constexpr std::string_view kDisconnectedText = "24";

/// How long the line must stay silent before a held "24" counts as a whole line, in milliseconds.
inline constexpr int kSilenceMilliseconds = 100;

/// Cuts received text into the chunks that the link handles: single characters, with one exception.
/// A line that is exactly "24" is one chunk, so that a disconnect is recognised and a 24 inside a
/// reading is not taken for one. Its characters are held back until the line ends or falls silent.
class ChunkSplitter {
 public:
  /// The timer runs while text is held back; its tick must call `Silence_Timer`. `take` is given
  /// every chunk in turn.
  ChunkSplitter(platform::Timer& silence, std::function<void(std::string_view)> take);

  void Feed(std::string_view text);

  /// Drops what is held back; the next character begins a line.
  void Discard();

  /// The line has been silent long enough: text held back is complete.
  void Silence_Timer();

 private:
  void FeedCharacter(char character);
  void Release();

  platform::Timer& silence_;
  std::function<void(std::string_view)> take_;
  std::string held_;
  bool atLineStart_ = true;
};

}  // namespace kelvara::link
