#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvara::qt {

/// The text of a settings file: sections, keys and values, with comments kept in place.
///
///     ; a comment
///     [Settings]
///     ComPort=3
///     LastFile=C:\logs\monday, hall 2.txt
///
/// A value is everything after "=", without surrounding blanks. It has no escapes, lists or
/// comments, so that a path can be read and typed as it is. A value that could not be read back
/// that way (blanks at its ends, quotes around it, control characters) is written in quotes; inside
/// quotes, \x and two hexadecimal digits represent a byte. Bytes above 127 stay unchanged.
/// Sections and keys are found in any letter case. If a key occurs twice, the last one counts.
class IniText {
 public:
  /// No settings at all.
  IniText() = default;

  /// Reads a file's text. Returns nothing if it is not a settings text: if it contains control
  /// characters, or a line that is not a section, a comment or KEY=VALUE.
  static std::optional<IniText> Parse(std::string_view text);

  /// A key's value, or nothing if the key is absent.
  std::optional<std::string> Value(std::string_view section, std::string_view key) const;

  /// Sets a key's value, in the key's line or in a new one at the end of its section. Section and
  /// key must be plain words; they are not checked.
  void SetValue(std::string_view section, std::string_view key, std::string_view value);

  std::string Text() const;

 private:
  /// The lines where a key is found or can be added.
  struct Place {
    std::optional<std::size_t> line;
    /// The section's last line that is not blank.
    std::optional<std::size_t> sectionEnd;
  };

  Place Find(std::string_view section, std::string_view key) const;

  std::vector<std::string> lines_;
};

}  // namespace kelvara::qt
