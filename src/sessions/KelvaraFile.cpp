#include "sessions/KelvaraFile.h"

#include <regex>

namespace kelvara::sessions {
namespace {

bool Holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// Whether an entry of the log is in the text: a reading, or the start of a capture.
bool HoldsLogEntry(std::string_view text) {
  static const std::regex reading(
      R"(, [0-9A-F]+(\[[0-9A-F]+\])?->[0-9A-F]+(\[[0-9A-F]+\])?=-?[0-9]+[\r\n])");
  return Holds(text, ", Log To File Started") ||
         std::regex_search(text.begin(), text.end(), reading);
}

}  // namespace

std::string_view KelvaraFile(std::string_view start) {
  start = start.substr(0, kFileStartBytes);
  if (start.starts_with('{') && Holds(start, "\"aas\"")) {
    return "JSON results that Kelvara wrote";
  }
  if (start.starts_with("File Created by Kelvara")) {
    return "CSV results that Kelvara wrote";
  }
  if (start.starts_with("<!DOCTYPE HTML") && Holds(start, "Kelvara")) {
    return "an HTML report that Kelvara wrote";
  }
  return HoldsLogEntry(start) ? "a log that Kelvara captured" : "";
}

}  // namespace kelvara::sessions
