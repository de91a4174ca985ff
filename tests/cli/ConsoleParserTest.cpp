#include "cli/ConsoleParser.h"

#include <gtest/gtest.h>

#include <vector>

#include "cli/ConvertCommand.h"
#include "cli/ReplayCommand.h"

namespace kelvara::cli {
namespace {

void Parse(ConsoleParser& parser, const std::vector<const char*>& arguments) {
  parser.Parse({arguments.begin(), arguments.end()});
}

TEST(ConsoleParser, ChoosesTheNamedSubCommand) {
  ConsoleParser replay;
  Parse(replay, {"replay", "-"});
  EXPECT_NE(dynamic_cast<ReplayCommand*>(replay.Chosen()), nullptr);
  ConsoleParser convert;
  Parse(convert, {"convert", "metres", "-5"});
  EXPECT_NE(dynamic_cast<ConvertCommand*>(convert.Chosen()), nullptr);
}

TEST(ConsoleParser, ChoosesNothingWithoutASubCommand) {
  ConsoleParser parser;
  Parse(parser, {});
  EXPECT_EQ(parser.Chosen(), nullptr);
}

TEST(ConsoleParser, RefusesAnArgumentThatIsNotASubCommand) {
  for (const char* const argument : {"rewind", "--fast", ""}) {
    ConsoleParser parser;
    EXPECT_THROW(Parse(parser, {argument}), CLI::ParseError) << argument;
  }
}

TEST(ConsoleParser, RefusesAnUnexpectedEmptyArgument) {
  const std::vector<std::vector<const char*>> lines{{""},
                                                    {"rewind", ""},
                                                    {"rewind", "convert", "rfps", "1", ""},
                                                    {"-s", "--", "replay", ""},
                                                    {"convert", "rfps", "1", ""},
                                                    {"convert", "rfps", "-1", ""},
                                                    {"ports", "--", ""}};
  for (const std::vector<const char*>& line : lines) {
    ConsoleParser parser;
    EXPECT_THROW(Parse(parser, line), CLI::ParseError) << line.front();
  }
}

TEST(ConsoleParser, TakesAnArgumentThatBeginsWithASlashForAFile) {
  ConsoleParser parser;
  EXPECT_FALSE(parser.Program().get_allow_windows_style_options());
  Parse(parser, {"replay", "/file.txt"});
  EXPECT_NE(dynamic_cast<ReplayCommand*>(parser.Chosen()), nullptr);
}

TEST(ConsoleParser, HelpAndVersionEndWithExitCodeZero) {
  for (const char* const argument : {"--help", "--version"}) {
    ConsoleParser parser;
    try {
      Parse(parser, {argument});
      ADD_FAILURE() << argument;
    } catch (const CLI::ParseError& error) {
      EXPECT_EQ(error.get_exit_code(), 0) << argument;
    }
  }
}

}  // namespace
}  // namespace kelvara::cli
