#pragma once

#include <stdexcept>
#include <string>

namespace kelvara::base {

/// What went wrong, in the system's own classes of fault.
enum class FaultKind {
  Overflow,    ///< A result outside the 16- or 32-bit integer that has to hold it.
  Subscript,   ///< An index outside its table.
  NotANumber,  ///< A text that had to be a number and is none.
  File,        ///< A file that could not be opened, read or written.
  Port,        ///< A serial port that could not be opened or used.
};

/// The one exception of the system. The engine throws it, every event handler catches it; the text
/// may be shown to the user.
class Fault : public std::runtime_error {
 public:
  Fault(FaultKind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}

  FaultKind Kind() const { return kind_; }

 private:
  FaultKind kind_;
};

}  // namespace kelvara::base
