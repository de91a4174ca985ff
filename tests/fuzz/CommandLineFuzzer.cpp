#include <CLI/CLI.hpp>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Expect.h"
#include "PlainCommandLine.h"
#include "cli/ConsoleParser.h"

namespace kelvara::test {
namespace {

constexpr std::size_t kMostArguments = 40;

/// The console program's option parser, of whose sub-commands none is ever run.
class ParserUnderTest {
 public:
  /// What the parser makes of the arguments; open when it is asked for its help.
  PlainVerdict Parse(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers{"kelvara-cli"};
    for (const std::string& argument : arguments) {
      pointers.push_back(argument.c_str());
    }
    try {
      parser_.Parse(static_cast<int>(pointers.size()), pointers.data());
      return PlainVerdict::Accepted;
    } catch (const CLI::ParseError& error) {
      if (error.get_exit_code() == 0) {
        return PlainVerdict::Open;
      }
      Expect(*error.what() != '\0', "a wrong command line is told why");
      return PlainVerdict::Refused;
    }
  }

  /// The sub-command that was named, or null.
  const CLI::App* Command() const {
    const auto commands = parser_.Program().get_subcommands();
    Expect(commands.size() <= 1, "one sub-command at the most is taken");
    return commands.empty() ? nullptr : commands.front();
  }

 private:
  cli::ConsoleParser parser_;
};

std::vector<std::string> ArgumentsOf(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> arguments;
  if (size == 0) {
    return arguments;
  }
  arguments.emplace_back();
  for (std::size_t place = 0; place < size; ++place) {
    if (data[place] != 0) {
      arguments.back() += static_cast<char>(data[place]);
    } else if (arguments.size() < kMostArguments) {
      arguments.emplace_back();
    } else {
      break;
    }
  }
  return arguments;
}

/// A file whose name begins with a bracket or a dash, or is "++", is named from the current folder
/// on.
PlainValues FileNames(PlainValues words) {
  for (std::string& word : words) {
    const bool isDashed = word.starts_with("-") && word != "-";
    word = isDashed || word.starts_with("[") || word == "++" ? "./" + word : word;
  }
  return words;
}

void CheckWords(const CLI::App& command, const PlainCommandLine& expected) {
  if (expected.command == "replay") {
    const CLI::Option* files = command.get_option("FILE");
    Expect(files->count() == expected.words.size(), "every file is taken");
    Expect(expected.words.empty() || files->as<PlainValues>() == FileNames(expected.words),
           "the files are those that were named, in their order");
  } else if (expected.command == "convert") {
    const std::array<const char*, 2> names{"FIELD", "VALUE"};
    for (std::size_t word = 0; word < names.size(); ++word) {
      const CLI::Option* option = command.get_option(names.at(word));
      Expect((option->count() == 1) == (word < expected.words.size()), "every word is taken");
      Expect(option->count() == 0 || option->as<std::string>() == expected.words[word],
             "a word is taken as it stands");
    }
  }
}

void CheckOptions(const CLI::App& command, const PlainCommandLine& expected) {
  for (const std::string& name : PlainCommandLine::OptionsOf(expected.command)) {
    const CLI::Option* option = command.get_option(name);
    const auto given = expected.values.find(name);
    const PlainValues values = given == expected.values.end() ? PlainValues() : given->second;
    Expect(option->count() == values.size(), "the options are those that were given");
    Expect(values.empty() || option->results() == values, "a value is taken as it stands");
    Expect(values.empty() || option->as<PlainValues>() == values, "a value is one value");
  }
  for (const std::string& name : PlainCommandLine::FlagsOf(expected.command)) {
    Expect(command.get_option(name)->as<bool>() == (expected.flags.count(name) > 0),
           "the flags are those that were given");
  }
}

/// A number that was taken is the one that its digits say, or nothing was given.
void CheckWhole(const CLI::App& command, const char* name, long most) {
  const CLI::Option* option = command.get_option(name);
  if (option->count() > 0) {
    const int value = option->as<int>();
    Expect(value >= 1 && value <= most, "a whole number is in its range");
    Expect(std::to_string(value) == option->as<std::string>(), "a whole number is read as such");
  }
}

void CheckPositive(const CLI::App& command, const char* name, double most) {
  const CLI::Option* option = command.get_option(name);
  if (option->count() > 0) {
    const auto value = option->as<double>();
    Expect(value > 0.0 && value <= most, "a number is in its range");
    Expect(value == std::strtod(option->as<std::string>().c_str(), nullptr),
           "a number is read as such");
  }
}

/// What must hold of every line that is taken, the open ones too.
void CheckNumbers(const CLI::App& command) {
  if (command.get_name() == "record") {
    CheckWhole(command, "--com", 12);
    CheckWhole(command, "--baud", 4000000);
    CheckWhole(command, "--reports", 1000000000);
    CheckPositive(command, "--for", 315360000.0);
    CheckPositive(command, "--speed", 1000.0);
    const std::size_t sources = command.get_option("--port")->count() +
                                command.get_option("--com")->count() +
                                (command.get_option("--demo")->count() > 0 ? 1 : 0);
    Expect(sources == 1, "a record has one source");
  } else if (command.get_name() == "simulate") {
    const CLI::Option* fault = command.get_option("--fault");
    Expect(fault->count() == 0 || PlainIsFault(fault->as<std::string>()), "a fault has a rule");
    const CLI::Option* seed = command.get_option("--seed");
    Expect(
        seed->count() == 0 || std::to_string(seed->as<std::uint64_t>()) == seed->as<std::string>(),
        "a seed is read as such");
  }
}

void Check(const std::vector<std::string>& arguments) {
  PlainCommandLine expected(arguments);
  const PlainVerdict due = expected.Read();
  ParserUnderTest parser;
  const PlainVerdict verdict = parser.Parse(arguments);
  Expect(due == PlainVerdict::Open || verdict == due, "a command line is taken or refused");
  const CLI::App* command = parser.Command();
  if (verdict != PlainVerdict::Accepted || command == nullptr) {
    return;
  }
  CheckNumbers(*command);
  if (due == PlainVerdict::Accepted) {
    Expect(command->get_name() == expected.command, "the sub-command is the one that was named");
    CheckWords(*command, expected);
    CheckOptions(*command, expected);
  }
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  Check(ArgumentsOf(data, size));
  return 0;
}
