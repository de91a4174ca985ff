#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "Expect.h"
#include "base/Fault.h"
#include "sim/RfpsReportText.h"
#include "sim/SiteFile.h"
#include "sim/SiteWalk.h"
#include "support/Doubles.h"

namespace kelvara::test {
namespace {

/// In an input, means a long run of blanks, so that few bytes reach the size limit of a file.
constexpr char kLongRun = '\xFE';
constexpr std::size_t kLongRunBytes = 33000;
constexpr int kMaxLongRuns = 2;
constexpr std::size_t kMostFileBytes = 65536;
constexpr std::size_t kMostFaultBytes = 200;
constexpr const char* kName = "hall.txt";
constexpr std::size_t kMostAntennas = 51;

/// A number in the shortest form that is read back unchanged.
std::string Number(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

/// A site in the form of its file, with `gap` between the columns.
std::string Printed(const sim::Site& site, const std::string& gap, const std::string& lineEnd) {
  std::string text = "multipath" + gap + Number(site.multipath.share) + gap +
                     Number(site.multipath.meanUnits) + lineEnd;
  for (const sim::PairFault& fault : site.faults) {
    text += "fault" + gap + std::to_string(fault.fromRpn) + gap + std::to_string(fault.toRpn) +
            gap + Number(fault.units) + lineEnd;
  }
  for (const sim::Antenna& antenna : site.antennas) {
    text += std::to_string(antenna.rpn) + gap + std::to_string(antenna.fps) + gap +
            std::to_string(antenna.fpn) + gap + std::to_string(antenna.cableMetres);
    if (antenna.place) {
      text += gap + Number(antenna.place->x) + gap + Number(antenna.place->y);
    }
    text += lineEnd;
  }
  return text;
}

/// The site that a text describes, or the message of the fault.
std::variant<sim::Site, std::string> Parse(const std::string& text) {
  try {
    return sim::ParseSite(text, kName);
  } catch (const base::Fault& fault) {
    Expect(fault.Kind() == base::FaultKind::File, "a text that is not a site is a file fault");
    return std::string(fault.what());
  }
}

void CheckWalk(const sim::Site& site) {
  sim::SiteWalk walk(site, 1);
  for (int report = 0; report < 3; ++report) {
    const std::string text = sim::RfpsReportText(walk.Next());
    Expect(std::count(text.begin(), text.end(), '\n') == 29, "every site gives reports");
  }
}

void CheckSite(const sim::Site& site) {
  const auto& antennas = site.antennas;
  Expect(!antennas.empty() && antennas.size() <= kMostAntennas, "a site has 1 to 51 antennas");
  for (auto antenna = antennas.begin(); antenna != antennas.end(); ++antenna) {
    Expect(antenna->rpn >= 0 && antenna->rpn <= sim::kMaxRpn, "an RPN has two digits");
    Expect(antenna->fps >= 0 && antenna->fps <= sim::kMaxFps, "an FPS has one digit");
    Expect(antenna->fpn >= 0 && antenna->fpn <= sim::kMaxFpn, "an FPN has two digits");
    Expect(antenna->cableMetres >= 0 && antenna->cableMetres <= sim::kMaxCableMetres,
           "a cable is within the limit");
    Expect(std::none_of(antennas.begin(), antenna,
                        [&](const sim::Antenna& earlier) { return earlier.rpn == antenna->rpn; }),
           "an RPN is given once");
    Expect(!antenna->place || (std::abs(antenna->place->x) <= sim::kMaxPlaceMetres &&
                               std::abs(antenna->place->y) <= sim::kMaxPlaceMetres),
           "a place is within the limit");
  }
  for (const sim::PairFault& fault : site.faults) {
    Expect(std::abs(fault.units) <= sim::kMaxBendUnits, "a fault is within the limit");
  }
  Expect(sim::ParseSite(Printed(site, " ", "\n"), kName) == site,
         "a printed site is read back unchanged");
  Expect(sim::ParseSite(Printed(site, "\t ", " # x\r\n"), kName) == site,
         "a site is read back whatever surrounds its numbers");
  CheckWalk(site);
}

/// The first `count` lines of a text.
std::string FirstLines(const std::string& text, int count) {
  std::size_t end = 0;
  for (int line = 0; line < count; ++line) {
    const std::size_t lineFeed = text.find('\n', end);
    Expect(lineFeed != std::string::npos, "a fault names a line of the file");
    end = lineFeed + 1;
  }
  return text.substr(0, end);
}

/// Whether a text was refused because a fault is of an antenna that is not in it.
bool IsOfUnknownAntenna(const std::variant<sim::Site, std::string>& parsed) {
  const auto* const fault = std::get_if<std::string>(&parsed);
  return fault != nullptr && fault->find("there is no antenna with RPN") != std::string::npos;
}

void CheckFault(const std::string& fault, const std::string& text) {
  Expect(fault.size() <= kMostFaultBytes, "a fault is short");
  Expect(std::all_of(fault.begin(), fault.end(),
                     [](char character) { return character >= ' ' && character <= '~'; }),
         "a fault is safe to print on a terminal");
  const std::string file = "\"" + std::string(kName) + "\"";
  Expect(fault.starts_with(file), "a fault names the file");
  const std::string lineBefore = file + ", line ";
  if (!fault.starts_with(lineBefore)) {
    const auto withOne = Parse(text + "\n1 2 3 4\n");
    Expect(IsOfUnknownAntenna(withOne) || std::get<sim::Site>(withOne).antennas.size() == 1,
           "only a file without antennas is a fault without a line");
    return;
  }
  const int line = std::atoi(fault.c_str() + lineBefore.size());
  Expect(line > 0, "lines are counted from 1");
  if (IsOfUnknownAntenna(fault)) {
    return;  // That is known only at the end of the file.
  }
  const auto before = Parse(FirstLines(text, line - 1));
  Expect(std::holds_alternative<sim::Site>(before) || IsOfUnknownAntenna(before) ||
             !std::get<std::string>(before).starts_with(lineBefore),
         "the first wrong line is named");
}

void CheckParsing(const std::string& text) {
  const auto parsed = Parse(text);
  if (const auto* const site = std::get_if<sim::Site>(&parsed)) {
    CheckSite(*site);
  } else {
    CheckFault(std::get<std::string>(parsed), text);
  }
}

/// Reading a file gives the same as parsing its text, unless the file is too large.
void CheckReading(const std::string& text) {
  MemoryFileSystem files;
  files.files[kName] = text;
  std::optional<sim::Site> read;
  std::string fault;
  try {
    read = sim::ReadSite(files, kName);
  } catch (const base::Fault& thrown) {
    fault = thrown.what();
  }
  if (text.size() > kMostFileBytes) {
    Expect(!read && fault.ends_with("is too large to be a site file"), "a large file is refused");
    return;
  }
  const auto parsed = Parse(text);
  if (const auto* const site = std::get_if<sim::Site>(&parsed)) {
    Expect(*site == read, "a file gives the same site as its text");
  } else {
    Expect(!read && fault == std::get<std::string>(parsed),
           "a file gives the same fault as its text");
  }
}

std::string WithLongRuns(std::string_view input) {
  std::string text;
  int runs = 0;
  for (const char character : input) {
    if (character == kLongRun && runs < kMaxLongRuns) {
      text.append(kLongRunBytes, ' ');
      ++runs;
    } else {
      text += character;
    }
  }
  return text;
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = kelvara::test::WithLongRuns({reinterpret_cast<const char*>(data), size});
  kelvara::test::CheckParsing(text);
  kelvara::test::CheckReading(text);
  return 0;
}
