#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kelvara::survey {

/// UTF-8 text with the characters escaped that mean something in HTML. Control characters, which
/// HTML does not allow, become blanks.
std::string Escaped(std::string_view text);

/// `<tr>` with these cells, whose texts are HTML; the first cell is the row's header.
std::string HtmlRow(std::initializer_list<std::string_view> cells);

/// The start of a table whose header row, with these texts, is repeated on every printed page.
std::string HtmlTableStart(std::string_view tableClass,
                           std::initializer_list<std::string_view> titles);

inline constexpr std::string_view kHtmlTableEnd = "</tbody></table>\n";

}  // namespace kelvara::survey
