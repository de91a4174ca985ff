#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvara::qt {

/// The text of a settings file: sections, keys and values, comments kept where they stand.
///
///     ; a comment
///     [Settings]
///     ComPort=3
///     LastFile=C:\logs\monday, hall 2.txt
///
/// A value is all that stands behind "=", as it stands, without the blanks around it: there are no
/// escapes, lists or comments in it, so that a path can be read and typed as it is. A value that
/// could not be read back that way (blanks at its ends, quotes around it, control characters) is
/// written in quotes; inside these, \x and two hexadecimal digits stand for that byte. Bytes above
/// 127 stay what they are. Of two equal keys the last counts.
class IniText {
 public:
  /// No settings at all.
  IniText() = default;

  /// Reads a file's text; nothing when it is none: a line that is neither a section, a comment nor
  /// KEY=VALUE, or control characters.
  static std::optional<IniText> Parse(std::string_view text);

  /// A key's value, or nothing when the key is absent.
  std::optional<std::string> Value(std::string_view section, std::string_view key) const;

  /// Sets a key's value, in the key's line or in a new one at the end of its section. Section
  /// and key are plain words; they are not checked.
  void SetValue(std::string_view section, std::string_view key, std::string_view value);

  std::string Text() const;

 private:
  /// Where a key stands.
  struct Place {
    std::optional<std::size_t> line;
    /// The last line of the section that is not blank.
    std::optional<std::size_t> sectionEnd;
  };

  Place Find(std::string_view section, std::string_view key) const;

  std::vector<std::string> lines_;
};

}  // namespace kelvara::qt
