#include "sync/TextSearch.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "support/RandomText.h"

namespace kelvara::sync {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::array<std::string_view, 3> kWords{"100ec", "sync", "neighbour"};

std::size_t FindPlainly(std::string_view text, std::string_view word, std::size_t start) {
  for (std::size_t place = start; place + word.size() <= text.size(); ++place) {
    std::size_t same = 0;
    while (same < word.size()) {
      const char character = text[place + same];
      const bool isUpper = character >= 'A' && character <= 'Z';
      if ((isUpper ? static_cast<char>(character + ('a' - 'A')) : character) != word[same]) {
        break;
      }
      ++same;
    }
    if (same == word.size()) {
      return place;
    }
  }
  return kNone;
}

TEST(FindIgnoringCase, FindsTheWordInAnyLetterCase) {
  EXPECT_EQ(FindIgnoringCase("a Sync", "sync", 0), 2U);
  EXPECT_EQ(FindIgnoringCase("SYNC", "sync", 0), 0U);
  EXPECT_EQ(FindIgnoringCase("xsYnC", "sync", 0), 1U);
  EXPECT_EQ(FindIgnoringCase("--100EC--", "100ec", 0), 2U);
  EXPECT_EQ(FindIgnoringCase("NEIGHbour", "neighbour", 0), 0U);
}

TEST(FindIgnoringCase, FindsTheFirstPlaceAtOrAfterTheStart) {
  EXPECT_EQ(FindIgnoringCase("sync sync", "sync", 0), 0U);
  EXPECT_EQ(FindIgnoringCase("sync sync", "sync", 1), 5U);
  EXPECT_EQ(FindIgnoringCase("sync sync", "sync", 5), 5U);
  EXPECT_EQ(FindIgnoringCase("sync sync", "sync", 6), kNone);
  EXPECT_EQ(FindIgnoringCase("sync", "sync", 4), kNone);
  EXPECT_EQ(FindIgnoringCase("sync", "sync", 400), kNone);
}

TEST(FindIgnoringCase, FindsNothingInATextThatIsTooShort) {
  EXPECT_EQ(FindIgnoringCase("", "sync", 0), kNone);
  EXPECT_EQ(FindIgnoringCase("syn", "sync", 0), kNone);
  EXPECT_EQ(FindIgnoringCase("neighbou", "neighbour", 0), kNone);
}

TEST(FindIgnoringCase, FindsAWordBehindItsOwnBeginning) {
  EXPECT_EQ(FindIgnoringCase("1100ec", "100ec", 0), 1U);
  EXPECT_EQ(FindIgnoringCase("10100ec", "100ec", 0), 2U);
  EXPECT_EQ(FindIgnoringCase("ssync", "sync", 0), 1U);
  EXPECT_EQ(FindIgnoringCase("neineighbour", "neighbour", 0), 3U);
}

// One bit makes a letter lower case; set on anything else it must not make a match.
TEST(FindIgnoringCase, OnlyLettersHaveACase) {
  EXPECT_EQ(FindIgnoringCase("\x11\x10\x10"
                             "ec",
                             "100ec", 0),
            kNone);
  EXPECT_EQ(FindIgnoringCase("1\x10"
                             "0ec",
                             "100ec", 0),
            kNone);
  EXPECT_EQ(FindIgnoringCase("\xD3YNC", "sync", 0), kNone);
  EXPECT_EQ(FindIgnoringCase(std::string_view("s\0nc", 4), "sync", 0), kNone);
  EXPECT_EQ(FindIgnoringCase(std::string_view("\0\0sync", 6), "sync", 0), 2U);
}

TEST(FindIgnoringCase, EveryByteInEveryPlaceOfAWordMatchesAsItShould) {
  for (const std::string_view word : kWords) {
    for (std::size_t place = 0; place < word.size(); ++place) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string text = "..";
        text += word;
        text[2 + place] = static_cast<char>(byte);
        ASSERT_EQ(FindIgnoringCase(text, word, 0), FindPlainly(text, word, 0)) << text;
      }
    }
  }
}

TEST(FindIgnoringCase, AgreesWithAPlainSearchOnAnyText) {
  test::RandomText random(72);
  for (int round = 0; round < 20000; ++round) {
    const std::string text = random.Below(3) == 0 ? random.Bytes(300) : random.Mixture(40);
    // A copy without a byte behind its end, so that a sanitizer sees a look past it.
    const std::vector<char> bytes(text.begin(), text.end());
    const std::string_view view(bytes.data(), bytes.size());
    for (const std::string_view word : kWords) {
      const auto start = static_cast<std::size_t>(random.Below(40));
      ASSERT_EQ(FindIgnoringCase(view, word, start), FindPlainly(text, word, start))
          << word << " from " << start << " in " << text;
    }
  }
}

}  // namespace
}  // namespace kelvara::sync
