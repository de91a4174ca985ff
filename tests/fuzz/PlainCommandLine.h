#pragma once

#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

/// The rules of the console program's command lines said a second time, plainly. It shares nothing
/// with the program.
namespace kelvara::test {

/// What is to become of a command line. What the rules leave open (help asked for among other
/// things, a number in another form than plain digits, a flag given twice) is up to the program.
enum class PlainVerdict { Accepted, Refused, Open };

using PlainValues = std::vector<std::string>;

/// Whether a text is so many decimal digits, with no zero in front, and not above `most`.
inline bool PlainIsWhole(const std::string& text, unsigned long most) {
  return !text.empty() && text.size() <= 10 && text[0] != '0' &&
         text.find_first_not_of("0123456789") == std::string::npos &&
         std::strtoul(text.c_str(), nullptr, 10) <= most;
}

/// A decimal number above 0: digits with or without a full stop among them are for the rules to
/// decide, all else is open where the C library sees a number in it.
inline PlainVerdict PlainPositive(const std::string& text, double most) {
  const bool isPlain = !text.empty() &&
                       text.find_first_not_of("0123456789.") == std::string::npos &&
                       text.find('.') == text.rfind('.') && text != ".";
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  const bool isIn = value > 0.0 && value <= most;
  if (isPlain) {
    return isIn ? PlainVerdict::Accepted : PlainVerdict::Refused;
  }
  return isIn && end != text.c_str() ? PlainVerdict::Open : PlainVerdict::Refused;
}

/// As many decimal digits as 64 bits hold, with no zero in front.
inline bool PlainIsSeed(const std::string& text) {
  static const std::string kMost = "18446744073709551615";
  const bool isShort = text.size() < kMost.size() || (text.size() == kMost.size() && text <= kMost);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos && isShort &&
         (text[0] != '0' || text == "0");
}

/// Digits as a number; zeros in front count for nothing. -1 for anything else.
inline long PlainDigitsValue(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) {
    return -1;
  }
  const std::size_t first = text.find_first_not_of('0');
  const std::string digits = first == std::string::npos ? "0" : text.substr(first);
  return digits.size() > 9 ? -1 : std::strtol(digits.c_str(), nullptr, 10);
}

/// NAME, NAME:always, NAME:once or NAME:N.
inline bool PlainIsFault(const std::string& text) {
  static const std::set<std::string> kNames{
      "none",    "silent",          "24",    "partial", "late",
      "garbled", "lost-line-feeds", "flood", "hang-up", "slow"};
  const std::size_t colon = text.find(':');
  if (kNames.count(text.substr(0, colon)) == 0) {
    return false;
  }
  const std::string when = colon == std::string::npos ? "always" : text.substr(colon + 1);
  const long every = PlainDigitsValue(when);
  return when == "always" || when == "once" || (every >= 1 && every <= 1000000);
}

/// N=DEVICE, with blanks and tabs around either.
inline bool PlainIsAssignment(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos ||
      text.find_first_not_of(" \t", equals + 1) == std::string::npos) {
    return false;
  }
  std::string number = text.substr(0, equals);
  number.erase(number.find_last_not_of(" \t") + 1);
  number.erase(0, number.find_first_not_of(" \t"));
  const long port = PlainDigitsValue(number);
  return port >= 1 && port <= 12;
}

/// A command line taken apart.
class PlainCommandLine {
 public:
  explicit PlainCommandLine(PlainValues arguments) : arguments_(std::move(arguments)) {}

  PlainVerdict Read() {
    for (const std::string& argument : arguments_) {
      mayBeHelp_ = mayBeHelp_ || argument.starts_with("-h") || argument.starts_with("--help") ||
                   argument.starts_with("--version");
    }
    PlainVerdict verdict = ReadCommand();
    if (verdict == PlainVerdict::Accepted) {
      verdict = CheckWhole();
    }
    return verdict == PlainVerdict::Refused && mayBeHelp_ ? PlainVerdict::Open : verdict;
  }

  std::string command;
  std::map<std::string, PlainValues> values;
  std::set<std::string> flags;
  PlainValues words;

  static const std::set<std::string>& OptionsOf(const std::string& name) {
    static const std::map<std::string, std::set<std::string>> kOptions{
        {"replay",
         {"--units", "--rpn", "--fps", "--log", "--report", "--site", "--tester", "--notes",
          "--csv", "--json"}},
        {"record",
         {"--units", "--rpn", "--fps", "--log", "--report", "--site", "--tester", "--notes",
          "--csv", "--json", "--port", "--com", "--baud", "--reports", "--for", "--raw",
          "--speed"}},
        {"simulate", {"--site", "--link", "--seed", "--fault", "--log-commands"}},
        {"ports", {"--com"}},
        {"convert", {}}};
    return kOptions.at(name);
  }

  static const std::set<std::string>& FlagsOf(const std::string& name) {
    static const std::map<std::string, std::set<std::string>> kFlags{
        {"replay", {"--whole", "--grid"}},
        {"record", {"--demo", "--grid"}},
        {"simulate", {"--control"}},
        {"ports", {}},
        {"convert", {}}};
    return kFlags.at(name);
  }

 private:
  PlainVerdict ReadCommand() {
    if (arguments_.empty()) {
      return PlainVerdict::Accepted;
    }
    command = arguments_[0];
    static const std::set<std::string> kCommands{"replay", "record", "simulate", "ports",
                                                 "convert"};
    if (kCommands.count(command) == 0) {
      return command.starts_with("-") ? PlainVerdict::Open : PlainVerdict::Refused;
    }
    for (next_ = 1; next_ < arguments_.size();) {
      const PlainVerdict verdict = ReadArgument(arguments_[next_++]);
      if (verdict != PlainVerdict::Accepted) {
        return verdict;
      }
    }
    return PlainVerdict::Accepted;
  }

  PlainVerdict ReadArgument(const std::string& argument) {
    const bool isHelp = argument == "--help" || argument == "-h";
    const bool isConvertValue = command == "convert" && words.size() == 1 && !isHelp;
    if (onlyWords_) {
      words.push_back(argument);
    } else if (argument == "--") {
      onlyWords_ = true;
    } else if (isConvertValue || argument == "-" || !argument.starts_with("-")) {
      words.push_back(argument);
    } else if (argument.starts_with("--")) {
      return ReadOption(argument);
    } else {
      return std::isalpha(static_cast<unsigned char>(argument[1])) != 0 ? PlainVerdict::Refused
                                                                        : PlainVerdict::Open;
    }
    return PlainVerdict::Accepted;
  }

  PlainVerdict ReadOption(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    if (FlagsOf(command).count(name) > 0) {
      const bool isNew = flags.insert(name).second;
      return isNew && equals == std::string::npos ? PlainVerdict::Accepted : PlainVerdict::Open;
    }
    if (OptionsOf(command).count(name) == 0) {
      return std::isalpha(static_cast<unsigned char>(argument[2])) != 0 ? PlainVerdict::Refused
                                                                        : PlainVerdict::Open;
    }
    if (equals == std::string::npos && next_ == arguments_.size()) {
      return PlainVerdict::Refused;
    }
    const std::string value =
        equals == std::string::npos ? arguments_[next_++] : argument.substr(equals + 1);
    values[name].push_back(value);
    return values[name].size() > 1 && command != "ports" ? PlainVerdict::Refused
                                                         : CheckValue(name, value);
  }

  PlainVerdict CheckValue(const std::string& name, const std::string& value) const {
    static const std::map<std::string, std::set<std::string>> kChoices{
        {"--units", {"rfps", "aasync", "metres"}},
        {"--rpn", {"dec", "hex"}},
        {"--fps", {"on", "off"}}};
    static const std::map<std::string, unsigned long> kWholes{
        {"--com", 12}, {"--baud", 4000000}, {"--reports", 1000000000}};
    if (name == "--for" || name == "--speed") {
      return PlainPositive(value, name == "--for" ? 315360000.0 : 1000.0);
    }
    bool isGood = true;
    if (kChoices.count(name) > 0) {
      isGood = kChoices.at(name).count(value) > 0;
    } else if (command == "ports") {
      isGood = PlainIsAssignment(value);
    } else if (kWholes.count(name) > 0) {
      isGood = PlainIsWhole(value, kWholes.at(name));
    } else if (name == "--seed") {
      isGood = PlainIsSeed(value);
    } else if (name == "--fault") {
      isGood = PlainIsFault(value);
    }
    return isGood ? PlainVerdict::Accepted : PlainVerdict::Refused;
  }

  /// What no argument shows by itself.
  PlainVerdict CheckWhole() const {
    static const std::set<std::string> kFields{"rfps",  "aasync", "metres", "ohms",
                                               "delay", "rpn",    "rpndec", "port"};
    bool isGood = true;
    if (command == "convert") {
      isGood = words.size() <= 2 && (words.empty() || kFields.count(words[0]) > 0);
    } else if (command != "replay") {
      isGood = words.empty();
    }
    if (command == "record") {
      const std::size_t sources =
          values.count("--port") + values.count("--com") + flags.count("--demo");
      isGood =
          isGood && sources == 1 && (values.count("--speed") == 0 || flags.count("--demo") > 0);
    }
    return isGood ? PlainVerdict::Accepted : PlainVerdict::Refused;
  }

  PlainValues arguments_;
  std::size_t next_ = 0;
  bool onlyWords_ = false;
  bool mayBeHelp_ = false;
};

}  // namespace kelvara::test
