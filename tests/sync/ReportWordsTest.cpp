#include "sync/ReportWords.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kelvara::sync {

bool operator==(const FoundWord& left, const FoundWord& right) {
  return left.word == right.word && left.index == right.index;
}

void PrintTo(const FoundWord& found, std::ostream* out) {
  *out << static_cast<int>(found.word) << " at " << found.index;
}

namespace {

std::vector<FoundWord> All(std::string_view text) {
  std::vector<FoundWord> all;
  ReportWords words(text);
  while (const std::optional<FoundWord> found = words.Next()) {
    all.push_back(*found);
  }
  return all;
}

TEST(ReportWords, FindsNothingInAnEmptyText) { EXPECT_TRUE(All("").empty()); }

TEST(ReportWords, FindsTheWordsInTheOrderOfTheText) {
  const std::vector<FoundWord> expected{
      {ReportWord::Marker, 0}, {ReportWord::Sync, 11}, {ReportWord::Neighbour, 16}};
  EXPECT_EQ(All("100ec5A301 Sync Neighbour"), expected);
}

TEST(ReportWords, FindsTheWordsInAnyLetterCase) {
  const std::vector<FoundWord> expected{
      {ReportWord::Marker, 0}, {ReportWord::Sync, 5}, {ReportWord::Neighbour, 9}};
  EXPECT_EQ(All("100EcsYnCnEiGhBoUr"), expected);
}

TEST(ReportWords, MatchesNoOtherCharacters) {
  for (const std::string_view word : {"100ec", "sync", "neighbour"}) {
    for (std::size_t place = 0; place < word.size(); ++place) {
      for (int value = 0; value < 256; ++value) {
        std::string text(word);
        text[place] = static_cast<char>(value);
        const char upperCase =
            word[place] >= 'a' ? static_cast<char>(word[place] - 'a' + 'A') : word[place];
        const bool isLetter = text[place] == word[place] || text[place] == upperCase;
        EXPECT_EQ(All(text).size(), isLetter ? 1U : 0U)
            << word << " with " << value << " at " << place;
      }
    }
  }
}

TEST(ReportWords, FindsAdjacentWordsAndWordsAfterTheirOwnBeginnings) {
  const std::vector<FoundWord> adjacent{
      {ReportWord::Neighbour, 0}, {ReportWord::Sync, 9}, {ReportWord::Marker, 13}};
  EXPECT_EQ(All("neighboursync100ec"), adjacent);
  const std::vector<FoundWord> afterBeginnings{
      {ReportWord::Marker, 1}, {ReportWord::Sync, 8}, {ReportWord::Neighbour, 15}};
  EXPECT_EQ(All("1100ecsysyncneineighbour"), afterBeginnings);
}

TEST(ReportWords, IgnoresATruncatedWord) {
  EXPECT_TRUE(All("100e").empty());
  EXPECT_TRUE(All("syn").empty());
  EXPECT_TRUE(All("neighbou").empty());
}

TEST(ReportWords, KeepsReportingThatNothingIsLeft) {
  ReportWords words("sync");
  EXPECT_TRUE(words.Next());
  EXPECT_FALSE(words.Next());
  EXPECT_FALSE(words.Next());
}

}  // namespace
}  // namespace kelvara::sync
