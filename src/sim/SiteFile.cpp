#include "sim/SiteFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
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

/// What a decimal number means, and its limits, also as text.
struct Range {
  const char* name;
  double minimum;
  double maximum;
  const char* limits;
};

constexpr Range kX{"place x", -kMaxPlaceMetres, kMaxPlaceMetres, "-100000 to 100000"};
constexpr Range kY{"place y", -kMaxPlaceMetres, kMaxPlaceMetres, "-100000 to 100000"};
constexpr Range kShare{"share", 0.0, 1.0, "0 to 1"};
constexpr Range kMean{"mean", 0.0, kMaxBendUnits, "0 to 999"};
constexpr Range kUnits{"RFPS units", -kMaxBendUnits, kMaxBendUnits, "-999 to 999"};

constexpr std::string_view kMultipath = "multipath";
constexpr std::string_view kFault = "fault";

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

/// A decimal number, read in the same way in every locale.
double ReadNumber(std::string_view text, const Range& range, const std::string& place) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = end == text.data() + text.size();
  if (!isWhole || error == std::errc::invalid_argument || std::isnan(value)) {
    Throw(place + range.name + " \"" + Shown(text) + "\" is not a number");
  }
  if (error != std::errc() || value < range.minimum || value > range.maximum) {
    Throw(place + range.name + " " + Shown(text) + " is outside " + range.limits);
  }
  return value;
}

/// Reads a site line by line.
class SiteReader {
 public:
  explicit SiteReader(std::string name) : name_(std::move(name)) {}

  void TakeLine(std::string_view line) {
    ++lineNumber_;
    const auto values = Values(line.substr(0, line.find(kComment)));
    if (values.empty()) {
      return;
    }
    if (values[0] == kMultipath) {
      TakeMultipath(values);
    } else if (values[0] == kFault) {
      TakeFault(values);
    } else {
      TakeAntenna(values);
    }
  }

  Site Finish() {
    if (site_.antennas.empty()) {
      Throw("\"" + name_ + "\": there is no antenna in it");
    }
    for (std::size_t index = 0; index < site_.faults.size(); ++index) {
      for (const int rpn : {site_.faults[index].fromRpn, site_.faults[index].toRpn}) {
        if (!lineOfRpn_.contains(rpn)) {
          Throw(PlaceOf(faultLines_[index]) + "there is no antenna with RPN " +
                std::to_string(rpn));
        }
      }
    }
    return std::move(site_);
  }

 private:
  std::string PlaceOf(int lineNumber) const {
    return "\"" + name_ + "\", line " + std::to_string(lineNumber) + ": ";
  }

  std::string Here() const { return PlaceOf(lineNumber_); }

  void TakeAntenna(const std::vector<std::string_view>& values) {
    const std::string here = Here();
    const bool hasPlace = values.size() == kColumns.size() + 2;
    if (values.size() != kColumns.size() && !hasPlace) {
      Throw(here + "four values are due (RPN, FPS, FPN and cable length), or six with a place (x " +
            "and y), there are " + std::to_string(values.size()));
    }
    Antenna antenna;
    for (std::size_t column = 0; column < kColumns.size(); ++column) {
      antenna.*kColumns[column].value = ReadValue(values[column], kColumns[column], here);
    }
    if (hasPlace) {
      antenna.place =
          Place{.x = ReadNumber(values[4], kX, here), .y = ReadNumber(values[5], kY, here)};
    }
    const auto [earlier, isNew] = lineOfRpn_.emplace(antenna.rpn, lineNumber_);
    if (!isNew) {
      Throw(here + "RPN " + std::to_string(antenna.rpn) + " is already in line " +
            std::to_string(earlier->second));
    }
    if (site_.antennas.size() == sync::kMaxAas) {
      Throw(here + "a site has at most " + std::to_string(sync::kMaxAas) + " antennas");
    }
    site_.antennas.push_back(antenna);
  }

  void TakeMultipath(const std::vector<std::string_view>& values) {
    const std::string here = Here();
    if (values.size() != 3) {
      Throw(here + "two values are due after \"multipath\" (share and mean), there are " +
            std::to_string(values.size() - 1));
    }
    if (multipathLine_) {
      Throw(here + "\"multipath\" is already in line " + std::to_string(*multipathLine_));
    }
    multipathLine_ = lineNumber_;
    site_.multipath = {.share = ReadNumber(values[1], kShare, here),
                       .meanUnits = ReadNumber(values[2], kMean, here)};
  }

  void TakeFault(const std::vector<std::string_view>& values) {
    const std::string here = Here();
    if (values.size() != 4) {
      Throw(here + "three values are due after \"fault\" (two RPNs and RFPS units), there are " +
            std::to_string(values.size() - 1));
    }
    const PairFault fault{.fromRpn = ReadValue(values[1], kColumns[0], here),
                          .toRpn = ReadValue(values[2], kColumns[0], here),
                          .units = ReadNumber(values[3], kUnits, here)};
    if (fault.fromRpn == fault.toRpn) {
      Throw(here + "a pair has two different RPNs");
    }
    for (std::size_t index = 0; index < site_.faults.size(); ++index) {
      const PairFault& other = site_.faults[index];
      if (std::minmax(other.fromRpn, other.toRpn) == std::minmax(fault.fromRpn, fault.toRpn)) {
        Throw(here + "the pair is already in line " + std::to_string(faultLines_[index]));
      }
    }
    site_.faults.push_back(fault);
    faultLines_.push_back(lineNumber_);
  }

  std::string name_;
  Site site_;
  int lineNumber_ = 0;
  std::map<int, int> lineOfRpn_;
  std::optional<int> multipathLine_;
  std::vector<int> faultLines_;
};

}  // namespace

Site ParseSite(std::string_view text, const std::string& name) {
  SiteReader reader(name);
  while (!text.empty()) {
    const std::size_t lineEnd = std::min(text.find('\n'), text.size());
    reader.TakeLine(text.substr(0, lineEnd));
    text.remove_prefix(std::min(lineEnd + 1, text.size()));
  }
  return reader.Finish();
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
