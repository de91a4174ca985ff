#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

namespace kelvara::cli {
namespace {

bool BeginsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }

bool IsHelp(const std::string& argument) { return argument == "--help" || argument == "-h"; }

bool TakesValue(const CLI::App& command, const std::string& name) {
  const CLI::Option* const option = command.get_option_no_throw(name);
  return option != nullptr && option->get_items_expected_min() > 0;
}

/// Whether there is room for one more behind so many words that are no options.
bool TakesWord(const CLI::App& command, int words) {
  int most = 0;
  for (const CLI::Option* option : command.get_options()) {
    most += option->get_positional() ? option->get_items_expected_max() : 0;
  }
  return words < most;
}

[[noreturn]] void RefuseEmptyWord() {
  // The option parser would take it for the name of a nameless group, and never come to an end.
  throw CLI::ParseError("an empty argument was not expected", CLI::ExitCodes::ExtrasError);
}

/// Takes the arguments in turn and adds what the option parser needs to read each as it is meant.
class ArgumentReader {
 public:
  explicit ArgumentReader(const CLI::App& program) : program_(program) {}

  /// The first argument. False when it is no sub-command: it asks for help or is wrong, whatever
  /// comes behind it.
  bool ReadCommand(std::string argument) {
    if (argument.empty()) {
      RefuseEmptyWord();
    }
    command_ = FindCommand(argument);
    read.push_back(std::move(argument));
    return command_ != nullptr;
  }

  void Read(std::string argument) {
    if (valueDue_) {
      valueDue_ = false;
    } else if (!separated_ && argument == "--") {
      separated_ = true;
      if (std::exchange(onlyWords_, true) || !IsConvert()) {
        // It stands there already, before a value with a dash; and behind a first file the option
        // parser would leave the sub-command here.
        return;
      }
    } else if (!onlyWords_ && BeginsWith(argument, "--") && !IsConvertValue(argument)) {
      ReadOption(argument);
    } else {
      ReadWord(argument);
    }
    read.push_back(std::move(argument));
  }

  std::vector<std::string> read;

 private:
  const CLI::App* FindCommand(const std::string& name) const {
    const auto commands = program_.get_subcommands(
        [&](const CLI::App* command) { return command->get_name() == name; });
    return commands.empty() ? nullptr : commands.front();
  }

  void ReadOption(std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) {
      valueDue_ = TakesValue(*command_, argument);
    } else if (equals + 1 == argument.size() && TakesValue(*command_, argument.substr(0, equals))) {
      // An empty value behind "=" would count as none, and the next argument be taken for it.
      read.push_back(argument.substr(0, equals));
      argument.clear();
    }
  }

  void ReadWord(std::string& argument) {
    if (argument.empty() && !TakesWord(*command_, words_)) {
      RefuseEmptyWord();
    }
    const bool isDashedValue = BeginsWith(argument, "-") && IsConvertValue(argument);
    // Brackets would be read as a list of names, a dash as an option, "++" as a command's end.
    if (!IsConvert() && (BeginsWith(argument, "[") || argument == "++" || IsDashedFile(argument))) {
      argument.insert(0, "./");
    } else if (!onlyWords_ && (isDashedValue || argument == "++")) {
      read.emplace_back("--");
      onlyWords_ = true;
    }
    ++words_;
  }

  bool IsConvert() const { return command_->get_name() == "convert"; }

  /// A dash alone is standard input, behind "--" too.
  bool IsDashedFile(const std::string& argument) const {
    return onlyWords_ && argument.size() > 1 && BeginsWith(argument, "-");
  }

  /// "convert FIELD VALUE": the second word is a value, whatever it begins with.
  bool IsConvertValue(const std::string& argument) const {
    return IsConvert() && words_ == 1 && !IsHelp(argument);
  }

  const CLI::App& program_;
  const CLI::App* command_ = nullptr;
  bool valueDue_ = false;
  bool onlyWords_ = false;
  bool separated_ = false;
  int words_ = 0;
};

}  // namespace

std::vector<std::string> ReversedArguments(const CLI::App& program, int argumentCount,
                                           const char* const* arguments) {
  ArgumentReader reader(program);
  if (argumentCount > 1 && reader.ReadCommand(arguments[1])) {
    for (int i = 2; i < argumentCount; ++i) {
      reader.Read(arguments[i]);
    }
  }
  std::reverse(reader.read.begin(), reader.read.end());
  return std::move(reader.read);
}

}  // namespace kelvara::cli
