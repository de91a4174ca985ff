#include "support/Golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <sstream>

#include "support/TextFile.h"

namespace kelvara::test {

namespace {

/// Made whole at the start: a test may change the current folder, and with it, on Windows, the
/// drive that a path without one starts from.
const std::string goldenFolder = std::filesystem::absolute(KELVARA_GOLDEN_DIR).string();

}  // namespace

std::string GoldenPath(const std::string& name) { return goldenFolder + "/" + name; }

std::string Golden(const std::string& name,
                   const std::vector<std::pair<std::string, std::string>>& placeholders) {
  std::string text = ReadTextFile(GoldenPath(name));
  EXPECT_FALSE(text.empty()) << name;
  for (const auto& [placeholder, value] : placeholders) {
    EXPECT_NE(text.find(placeholder), std::string::npos) << name << " has no " << placeholder;
    for (std::size_t place = text.find(placeholder); place != std::string::npos;
         place = text.find(placeholder, place + value.size())) {
      text.replace(place, placeholder.size(), value);
    }
  }
  return text;
}

void FillModel(sync::SyncModel& model, const std::string& name) {
  std::istringstream lines(ReadTextFile(GoldenPath(name)));
  std::string kind;
  std::int16_t first = 0;
  std::int16_t second = 0;
  std::int16_t third = 0;
  while (lines >> kind >> first >> second >> third) {
    if (kind == "aa") {
      model.FindOrAddAa(first, second, third);
    } else {
      ASSERT_EQ(kind, "phase") << name;
      model.AddPhase(first, second, third);
    }
  }
  ASSERT_TRUE(lines.eof()) << name;
  ASSERT_GT(model.AaCount(), 0) << name;
}

void ExpectSameText(const std::string& actual, const std::string& expected) {
  const auto [differs, other] =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  if (differs == actual.end() && other == expected.end()) {
    return;
  }
  const auto place = static_cast<std::size_t>(differs - actual.begin());
  const std::size_t lineFeed = place == 0 ? std::string::npos : actual.rfind('\n', place - 1);
  const std::size_t start = lineFeed == std::string::npos ? 0 : lineFeed + 1;
  const auto line = [start](const std::string& text) {
    return ::testing::PrintToString(text.substr(start, text.find('\n', start) - start + 1));
  };
  ADD_FAILURE() << "differs in line "
                << std::count(actual.begin(), actual.begin() + static_cast<std::ptrdiff_t>(start),
                              '\n') +
                       1
                << "\n  actual:   " << line(actual) << "\n  expected: " << line(expected);
}

}  // namespace kelvara::test
