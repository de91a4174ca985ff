#pragma once

#include <string_view>

namespace kelvara::link {

/// Sees what passes over the line: every command sent and everything received, in order.
class LineListener {
 public:
  virtual ~LineListener() = default;

  virtual void Sent(std::string_view command) = 0;
  virtual void Received(std::string_view text) = 0;
};

}  // namespace kelvara::link
