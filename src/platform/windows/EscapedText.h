#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kelvara::windows {

/// Converts text to the machine's character set without loss. A UTF-16 unit that the set lacks, or
/// whose bytes contain ASCII characters that a search for separators would find, becomes "?" and
/// four upper-case hexadecimal digits; so does a "?" that such digits follow.
std::string Escaped(const QString& text);

/// Restores what `Escaped` converted. Other text is converted from the machine's character set.
QString Unescaped(std::string_view text);

}  // namespace kelvara::windows
