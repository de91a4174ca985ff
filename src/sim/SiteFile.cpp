#include "sim/SiteFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <vector>

#include "base/Fault.h"
#include "sync/SyncModel.h"

namespace kelvara::sim {
namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{64} << 10U;
constexpr std::string_view kSeparators = " \t\r";
constexpr char kComment = '#';

struct Column {
  const char* name;
  int maximum;
  int Antenna::*value;
};

constexpr std::array<Column, 4> kColumns{
    {{"RPN", kMaxRpn, &Antenna::rpn},
     {"FPS", kMaxFps, &Antenna::fps},
     {"FPN", kMaxFpn, &Antenna::fpn},
     {"cable length", kMaxCableMetres, &Antenna::cableMetres}}};

[[noreturn]] void Throw(const std::string& text) { throw base::Fault(base::FaultKind::File, text); }

/// A value made safe to show: not too long, and without characters that a terminal would act on.
std::string Shown(std::string_view value) {
  constexpr std::size_t kMaxShown = 20;
  std::string shown(value.substr(0, kMaxShown));
  std::replace_if(
      shown.begin(), shown.end(),
      [](char character) { return character < ' ' || character > '~' || character == '"'; }, '?');
  return value.size() > kMaxShown ? shown + "..." : shown;
}

std::vector<std::string_view> Values(std::string_view line) {
  std::vector<std::string_view> values;
  std::size_t start = line.find_first_not_of(kSeparators);
  while (start != std::string_view::npos) {
    const std::size_t end = std::min(line.find_first_of(kSeparators, start), line.size());
    values.push_back(line.substr(start, end - start));
    start = line.find_first_not_of(kSeparators, end);
  }
  return values;
}

int ReadValue(std::string_view text, const Column& column, const std::string& place) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = end == text.data() + text.size();
  if (!isWhole || error == std::errc::invalid_argument) {
    Throw(place + column.name + " \"" + Shown(text) + "\" is not a whole number");
  }
  if (error != std::errc() || value < 0 || value > column.maximum) {
    Throw(place + column.name + " " + Shown(text) + " is outside 0 to " +
          std::to_string(column.maximum));
  }
  return value;
}

Antenna ReadAntenna(const std::vector<std::string_view>& values, const std::string& place) {
  if (values.size() != kColumns.size()) {
    Throw(place + "four values are due (RPN, FPS, FPN and cable length), there are " +
          std::to_string(values.size()));
  }
  Antenna antenna;
  for (std::size_t column = 0; column < kColumns.size(); ++column) {
    antenna.*kColumns[column].value = ReadValue(values[column], kColumns[column], place);
  }
  return antenna;
}

}  // namespace

Site ParseSite(std::string_view text, const std::string& name) {
  Site site;
  std::map<int, int> lineOfRpn;
  for (int lineNumber = 1; !text.empty(); ++lineNumber) {
    const std::size_t lineEnd = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, lineEnd);
    text.remove_prefix(std::min(lineEnd + 1, text.size()));
    const auto values = Values(line.substr(0, line.find(kComment)));
    if (values.empty()) {
      continue;
    }
    const std::string place = "\"" + name + "\", line " + std::to_string(lineNumber) + ": ";
    const Antenna antenna = ReadAntenna(values, place);
    const auto [earlier, isNew] = lineOfRpn.emplace(antenna.rpn, lineNumber);
    if (!isNew) {
      Throw(place + "RPN " + std::to_string(antenna.rpn) + " is already in line " +
            std::to_string(earlier->second));
    }
    if (site.size() == sync::kMaxAas) {
      Throw(place + "a site has at most " + std::to_string(sync::kMaxAas) + " antennas");
    }
    site.push_back(antenna);
  }
  if (site.empty()) {
    Throw("\"" + name + "\": there is no antenna in it");
  }
  return site;
}

Site ReadSite(platform::FileSystem& fileSystem, const std::string& path) {
  const auto file = fileSystem.OpenForInput(path);
  std::string text;
  std::array<char, 4096> piece{};
  while (const std::size_t got = file->Read(piece)) {
    text.append(piece.data(), got);
    if (text.size() > kMaxFileBytes) {
      Throw("\"" + path + "\" is too large to be a site file");
    }
  }
  return ParseSite(text, path);
}

}  // namespace kelvara::sim
