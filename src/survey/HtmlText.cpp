#include "survey/HtmlText.h"

namespace kelvara::survey {

std::string Escaped(std::string_view text) {
  std::string html;
  for (const char character : text) {
    switch (character) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += static_cast<unsigned char>(character) < 0x20 || character == 0x7F ? ' ' : character;
    }
  }
  return html;
}

std::string HtmlRow(std::initializer_list<std::string_view> cells) {
  std::string html = "<tr>";
  bool isHeader = true;
  for (const std::string_view cell : cells) {
    html += isHeader ? "<th scope=\"row\">" : "<td>";
    html += cell;
    html += isHeader ? "</th>" : "</td>";
    isHeader = false;
  }
  return html + "</tr>\n";
}

std::string HtmlTableStart(std::string_view tableClass,
                           std::initializer_list<std::string_view> titles) {
  std::string html = "<table class=\"" + std::string(tableClass) + "\"><thead><tr>";
  for (const std::string_view title : titles) {
    html += "<th scope=\"col\">";
    html += title;
    html += "</th>";
  }
  return html + "</tr></thead><tbody>\n";
}

}  // namespace kelvara::survey
