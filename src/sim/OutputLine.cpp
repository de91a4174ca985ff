#include "sim/OutputLine.h"

#include <algorithm>
#include <utility>

namespace kelvara::sim {

void OutputLine::Send(std::string text, std::int64_t notBefore, std::int64_t perByte) {
  if (text.empty()) {
    return;
  }
  const std::int64_t begin = std::max(notBefore, free_);
  free_ = begin + static_cast<std::int64_t>(text.size()) * perByte;
  texts_.push_back({std::move(text), 0, begin, perByte});
}

std::string OutputLine::Take(std::int64_t now) {
  std::string bytes;
  while (!texts_.empty()) {
    Text& text = texts_.front();
    if (now < text.begin) {
      break;
    }
    const auto left = static_cast<std::size_t>((now - text.begin) / text.perByte);
    const std::size_t end = std::min(left, text.bytes.size());
    bytes.append(text.bytes, text.taken, end - text.taken);
    text.taken = end;
    if (end < text.bytes.size()) {
      break;
    }
    texts_.pop_front();
  }
  return bytes;
}

std::optional<std::int64_t> OutputLine::NextDue() const {
  if (texts_.empty()) {
    return std::nullopt;
  }
  const Text& text = texts_.front();
  return text.begin + static_cast<std::int64_t>(text.taken + 1) * text.perByte;
}

void OutputLine::Clear() {
  texts_.clear();
  free_ = 0;
}

}  // namespace kelvara::sim
