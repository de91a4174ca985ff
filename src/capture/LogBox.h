#pragma once

#include <cstddef>
#include <string_view>

namespace kelvara::capture {

/// A log box with more characters than this is cut before text is appended.
inline constexpr std::size_t kMostLogCharacters = 32000;

/// The log box `TextLog` of the main window.
class LogBox {
 public:
  virtual ~LogBox() = default;

  /// Whether text is kept at all; a hidden log box keeps nothing.
  virtual bool IsShown() const = 0;

  /// Appends the text unchanged, line ends included.
  virtual void Append(std::string_view text) = 0;

  virtual void Clear() = 0;
};

}  // namespace kelvara::capture
