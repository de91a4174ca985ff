#pragma once

#include <stdexcept>
#include <string>

namespace kelvara::base {

/// The kinds of fault that the program distinguishes.
enum class FaultKind {
  Overflow,    ///< A result that does not fit in its 16- or 32-bit integer.
  Subscript,   ///< An index outside its table.
  NotANumber,  ///< A text that should be a number but is not.
  File,        ///< A file that could not be opened, read or written.
  Port,        ///< A serial port that could not be opened or used.
};

/// The only exception type of the program. The engine throws it and every event handler catches it;
/// its text may be shown to the user.
class Fault : public std::runtime_error {
 public:
  Fault(FaultKind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}

  FaultKind Kind() const { return kind_; }

 private:
  FaultKind kind_;
};

}  // namespace kelvara::base
