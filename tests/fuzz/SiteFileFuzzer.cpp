#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "base/Fault.h"
#include "sim/SiteFile.h"
#include "support/Doubles.h"
#include "sync/SyncModel.h"

namespace kelvara::test {
namespace {

/// Stands for a long run of blanks in an input, so that a few bytes reach the largest file.
constexpr char kLongRun = '\xFE';
constexpr std::size_t kLongRunBytes = 33000;
constexpr int kMaxLongRuns = 2;
constexpr std::size_t kMostFileBytes = 65536;
constexpr std::size_t kMostFaultBytes = 200;
constexpr const char* kName = "hall.txt";
constexpr std::array<int, 4> kMaxima{255, 15, 255, 2750};

/// What a site's text is: a site, or a fault in a line; line 0 is the file as a whole.
struct Reading {
  sim::Site site;
  std::optional<int> faultLine;
};

/// The number that a word is, in decimal digits; anything that no column has room for is -1.
int PlainNumber(std::string word) {
  const bool negative = word[0] == '-';
  word.erase(0, negative ? 1 : 0);
  if (word.empty() || word.find_first_not_of("0123456789") != std::string::npos) {
    return -1;
  }
  word.erase(0, std::min(word.find_first_not_of('0'), word.size() - 1));
  const int value = word.size() > 5 ? 99999 : std::stoi(word);
  return negative && value != 0 ? -1 : value;
}

/// The words of a line, made by putting its characters one behind the other.
std::vector<std::string> PlainWords(const std::string& line) {
  std::vector<std::string> words(1);
  for (const char character : line.substr(0, line.find('#'))) {
    if (character == ' ' || character == '\t' || character == '\r') {
      words.emplace_back();
    } else {
      words.back() += character;
    }
  }
  std::erase(words, std::string());
  return words;
}

bool IsGoodAntenna(const std::vector<std::string>& words, const sim::Site& earlier) {
  if (words.size() != kMaxima.size() || earlier.size() == sync::kMaxAas) {
    return false;
  }
  for (std::size_t column = 0; column < kMaxima.size(); ++column) {
    const int value = PlainNumber(words[column]);
    if (value < 0 || value > kMaxima[column]) {
      return false;
    }
  }
  return std::none_of(earlier.begin(), earlier.end(), [&](const sim::Antenna& antenna) {
    return antenna.rpn == PlainNumber(words[0]);
  });
}

/// The rules of a site file said a second time.
Reading ReadPlainly(const std::string& text) {
  Reading reading;
  std::istringstream lines(text);
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    const std::vector<std::string> words = PlainWords(line);
    if (words.empty()) {
      continue;
    }
    if (!IsGoodAntenna(words, reading.site)) {
      reading.faultLine = number;
      return reading;
    }
    reading.site.push_back({PlainNumber(words[0]), PlainNumber(words[1]), PlainNumber(words[2]),
                            PlainNumber(words[3])});
  }
  if (reading.site.empty()) {
    reading.faultLine = 0;
  }
  return reading;
}

/// A site as text, in the columns of its file, with something between them.
std::string Printed(const sim::Site& site, const std::string& gap, const std::string& lineEnd) {
  std::string text;
  for (const sim::Antenna& antenna : site) {
    text += std::to_string(antenna.rpn) + gap + std::to_string(antenna.fps) + gap +
            std::to_string(antenna.fpn) + gap + std::to_string(antenna.cableMetres) + lineEnd;
  }
  return text;
}

std::string LineName(int line) {
  std::string name = "\"";
  name += kName;
  name += line == 0 ? "\": " : "\", line " + std::to_string(line) + ": ";
  return name;
}

void CheckFault(const base::Fault& fault, std::optional<int> line) {
  const std::string text = fault.what();
  Expect(fault.Kind() == base::FaultKind::File, "what is no site is a file fault");
  Expect(line.has_value(), "a good site is read");
  Expect(text.starts_with(LineName(*line)), "a fault names the file and the line");
  Expect(text.size() <= kMostFaultBytes, "a fault is short");
  Expect(std::all_of(text.begin(), text.end(),
                     [](char character) { return character >= ' ' && character <= '~'; }),
         "a fault does nothing to a terminal");
}

void CheckParsing(const std::string& text) {
  const Reading expected = ReadPlainly(text);
  try {
    const sim::Site site = sim::ParseSite(text, kName);
    Expect(!expected.faultLine, "what is no site is refused");
    Expect(site == expected.site, "a site is what its file says");
    Expect(sim::ParseSite(Printed(site, " ", "\n"), kName) == site, "a printed site comes back");
    Expect(sim::ParseSite(Printed(site, "\t ", " # x\r\n"), kName) == site,
           "a site comes back whatever stands around its numbers");
  } catch (const base::Fault& fault) {
    CheckFault(fault, expected.faultLine);
  }
}

/// A file is read as its text is, unless it is too large.
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
  try {
    Expect(sim::ParseSite(text, kName) == read, "a file is read as its text is");
  } catch (const base::Fault& thrown) {
    Expect(!read && fault == thrown.what(), "a file is refused as its text is");
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
