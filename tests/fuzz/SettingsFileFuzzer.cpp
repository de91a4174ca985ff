#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Expect.h"
#include "platform/qt/IniText.h"

namespace kelvara::test {
namespace {

using qt::IniText;

/// Separates the file's text and the settings to make in it: section, key and value.
constexpr char kFieldEnd = '\x1E';
constexpr int kMaxSettings = 6;

/// Values by section and key, both in lower case.
using Settings = std::map<std::pair<std::string, std::string>, std::optional<std::string>>;

/// Removes the next field and its end mark from the text and returns the field.
std::string TakeField(std::string& text) {
  const std::size_t end = std::min(text.find(kFieldEnd), text.size());
  const std::string field = text.substr(0, end);
  text.erase(0, end + 1);
  return field;
}

bool IsPlainWord(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
  });
}

/// Settings are found in any letter case.
std::string LowerCase(std::string word) {
  std::transform(word.begin(), word.end(), word.begin(), [](char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  });
  return word;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

void CheckValues(const IniText& text, const Settings& expected) {
  for (const auto& [name, value] : expected) {
    Expect(text.Value(name.first, name.second) == value, "a value is kept until it is set");
  }
}

/// A text that is written and read again has the same values and is written the same way.
void CheckComesBack(const IniText& text, const Settings& expected) {
  const std::string written = text.Text();
  const std::optional<IniText> back = IniText::Parse(written);
  Expect(back.has_value(), "what was written can be read");
  Expect(back->Text() == written, "what was read is written unchanged");
  CheckValues(*back, expected);
}

/// At most one line is replaced; otherwise lines are only added.
void CheckOtherLines(const std::string& before, const std::string& after) {
  const std::vector<std::string> old = LinesOf(before);
  const std::vector<std::string> now = LinesOf(after);
  Expect(now.size() >= old.size() && now.size() <= old.size() + 3,
         "a setting adds at most a line, a heading and an empty line");
  const auto firstOther = std::mismatch(old.begin(), old.end(), now.begin());
  const auto lastOther = std::mismatch(old.rbegin(), std::make_reverse_iterator(firstOther.first),
                                       now.rbegin(), now.rend());
  const auto replaced = lastOther.first.base() - firstOther.first;
  Expect(replaced <= (now.size() == old.size() ? 1 : 0), "the other lines are unchanged");
}

void CheckSettings(IniText text, std::string rest) {
  std::vector<std::pair<std::pair<std::string, std::string>, std::string>> changes;
  Settings known;
  for (int made = 0; made < kMaxSettings && !rest.empty(); ++made) {
    const std::string section = TakeField(rest);
    const std::string key = TakeField(rest);
    const std::string value = TakeField(rest);
    if (IsPlainWord(section) && IsPlainWord(key)) {
      changes.push_back({{section, key}, value});
      known[{LowerCase(section), LowerCase(key)}] = text.Value(section, key);
    }
  }
  CheckComesBack(text, known);
  for (const auto& [name, value] : changes) {
    const std::string before = text.Text();
    text.SetValue(name.first, name.second, value);
    known[{LowerCase(name.first), LowerCase(name.second)}] = value;
    CheckValues(text, known);
    CheckOtherLines(before, text.Text());
    CheckComesBack(text, known);
  }
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  std::string rest(reinterpret_cast<const char*>(data), size);
  const std::string file = TakeField(rest);
  // When a file is refused, the settings go into an empty one.
  CheckSettings(kelvara::qt::IniText::Parse(file).value_or(kelvara::qt::IniText()), rest);
  return 0;
}
