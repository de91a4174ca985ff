#include "sync/ReportWords.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "support/RandomText.h"

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

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& character : lower) {
    if (character >= 'A' && character <= 'Z') {
      character = static_cast<char>(character + ('a' - 'A'));
    }
  }
  return lower;
}

/// One place after the other, one word after the other.
std::vector<FoundWord> AllPlainly(std::string_view text) {
  const std::string lower = LowerCase(text);
  std::vector<FoundWord> all;
  for (std::size_t index = 0; index < lower.size(); ++index) {
    const std::string_view rest = std::string_view(lower).substr(index);
    if (rest.starts_with("100ec")) {
      all.push_back({ReportWord::Marker, index});
    } else if (rest.starts_with("sync")) {
      all.push_back({ReportWord::Sync, index});
    } else if (rest.starts_with("neighbour")) {
      all.push_back({ReportWord::Neighbour, index});
    }
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

TEST(ReportWords, TakesNoOtherCharacterForOneOfAWord) {
  for (const std::string_view word : {"100ec", "sync", "neighbour"}) {
    for (std::size_t place = 0; place < word.size(); ++place) {
      for (int value = 0; value < 256; ++value) {
        std::string text(word);
        text[place] = static_cast<char>(value);
        EXPECT_EQ(All(text), AllPlainly(text)) << word << " with " << value << " at " << place;
      }
    }
  }
}

TEST(ReportWords, FindsAWordAtEveryPlaceAndBesideEveryEnd) {
  for (const std::string_view word : {"100ec", "sync", "neighbour"}) {
    for (std::size_t before = 0; before < 200; ++before) {
      for (const std::size_t behind : {0U, 1U, 63U, 64U, 65U}) {
        const std::string text =
            std::string(before, '1') + std::string(word) + std::string(behind, 'n');
        EXPECT_EQ(All(text), AllPlainly(text)) << word << " behind " << before;
      }
    }
  }
}

TEST(ReportWords, LeavesAWordCutShortAlone) {
  EXPECT_TRUE(All("100e").empty());
  EXPECT_TRUE(All("syn").empty());
  EXPECT_TRUE(All(std::string(60, ' ') + "neighbou").empty());
}

TEST(ReportWords, GoesOnSayingThatThereIsNothingLeft) {
  ReportWords words("sync");
  EXPECT_TRUE(words.Next());
  EXPECT_FALSE(words.Next());
  EXPECT_FALSE(words.Next());
}

TEST(ReportWords, FindsInAnyTextWhatAPlainSearchFinds) {
  test::RandomText texts(20);
  for (int round = 0; round < 20000; ++round) {
    const std::string text = round % 4 == 0 ? texts.Bytes(300) : texts.Mixture(60);
    ASSERT_EQ(All(text), AllPlainly(text)) << text;
  }
}

}  // namespace
}  // namespace kelvara::sync
