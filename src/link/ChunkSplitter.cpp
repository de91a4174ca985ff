#include "link/ChunkSplitter.h"

#include <utility>

namespace kelvara::link {
namespace {

bool EndsLine(char character) { return character == '\r' || character == '\n'; }

}  // namespace

ChunkSplitter::ChunkSplitter(platform::Timer& silence, std::function<void(std::string_view)> take)
    : silence_(silence), take_(std::move(take)) {}

void ChunkSplitter::Feed(std::string_view text) {
  for (const char character : text) {
    FeedCharacter(character);
  }
  silence_.SwitchOff();
  if (!held_.empty()) {
    silence_.SwitchOn();
  }
}

void ChunkSplitter::Discard() {
  silence_.SwitchOff();
  held_.clear();
  atLineStart_ = true;
}

void ChunkSplitter::FeedCharacter(char character) {
  const bool mayGoOn = held_.size() < kDisconnectedText.size() &&
                       character == kDisconnectedText[held_.size()] &&
                       (atLineStart_ || !held_.empty());
  if (mayGoOn) {
    held_ += character;
    atLineStart_ = false;
    return;
  }
  if (held_ == kDisconnectedText && EndsLine(character)) {
    held_.clear();
    take_(kDisconnectedText);
  }
  Release();
  atLineStart_ = EndsLine(character);
  take_(std::string_view(&character, 1));
}

void ChunkSplitter::Release() {
  const std::string held = std::exchange(held_, {});
  for (const char& character : held) {
    take_(std::string_view(&character, 1));
  }
}

void ChunkSplitter::Silence_Timer() {
  silence_.SwitchOff();
  if (held_ == kDisconnectedText) {
    held_.clear();
    take_(kDisconnectedText);
  }
  Release();
}

}  // namespace kelvara::link
