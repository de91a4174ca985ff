#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "PlainIni.h"
#include "base/Fault.h"
#include "platform/qt/IniText.h"

namespace kelvara::test {
namespace {

using qt::IniText;

/// Parts the file's text from the settings that are to be made in it: section, key and value.
constexpr char kFieldEnd = '\x1E';
constexpr int kMaxSettings = 6;

/// The text up to the mark that ends a field, which is taken away with it.
std::string TakeField(std::string& text) {
  const std::size_t end = std::min(text.find(kFieldEnd), text.size());
  const std::string field = text.substr(0, end);
  text.erase(0, end + 1);
  return field;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

void CheckValues(const IniText& text, const PlainSettings& expected) {
  for (const auto& [name, value] : expected) {
    Expect(text.Value(name.first, name.second) == value, "a value is what the file says");
  }
}

/// A text that is written and read again says the same, and is written the same.
void CheckComesBack(const IniText& text, const PlainSettings& expected) {
  const std::string written = text.Text();
  const std::optional<IniText> back = IniText::Parse(written);
  Expect(back.has_value(), "what was written can be read");
  Expect(back->Text() == written, "what was read is written as it was");
  CheckValues(*back, expected);
  Expect(ReadIniPlainly(written) == expected, "a written file holds these values and no others");
}

/// The lines of a file stay as they are, but for the one that is set, or the ones that are added.
void CheckOtherLines(const std::string& before, const std::string& after) {
  const std::vector<std::string> old = LinesOf(before);
  const std::vector<std::string> now = LinesOf(after);
  Expect(now.size() >= old.size() && now.size() <= old.size() + 3,
         "a setting takes a line, a heading and a gap at the most");
  const auto firstOther = std::mismatch(old.begin(), old.end(), now.begin());
  const auto lastOther = std::mismatch(old.rbegin(), std::make_reverse_iterator(firstOther.first),
                                       now.rbegin(), now.rend());
  const auto replaced = lastOther.first.base() - firstOther.first;
  Expect(replaced <= (now.size() == old.size() ? 1 : 0), "the other lines stay as they are");
}

/// Makes one setting in a text and in what is known of it.
void CheckSetting(IniText& text, PlainSettings& known, const std::string& section,
                  const std::string& key, const std::string& value) {
  const std::string before = text.Text();
  const bool canBeNamed = PlainIsName(section, ']') && PlainIsName(key, '=');
  try {
    text.SetValue(section, key, value);
  } catch (const base::Fault& fault) {
    Expect(fault.Kind() == base::FaultKind::File, "a name that cannot be written is a file fault");
    Expect(!canBeNamed, "a name that can be written is");
    Expect(text.Text() == before, "a setting that is refused changes nothing");
    return;
  }
  Expect(canBeNamed, "a name that cannot be written is refused");
  Expect(text.Value(section, key) == value, "a setting that was made is there");
  const std::string after = text.Text();
  Expect(after.size() <= before.size() + section.size() + key.size() + 4 * value.size() + 8,
         "a file grows by what is set in it");
  CheckOtherLines(before, after);
  known[{PlainLower(section), PlainLower(key)}] = value;
  CheckComesBack(text, known);
}

void CheckSettings(IniText text, PlainSettings known, std::string rest) {
  for (int made = 0; made < kMaxSettings && !rest.empty(); ++made) {
    const std::string section = TakeField(rest);
    const std::string key = TakeField(rest);
    const std::string value = TakeField(rest);
    const auto found = known.find({PlainLower(section), PlainLower(key)});
    Expect(text.Value(section, key) ==
               (found == known.end() ? std::nullopt : std::optional(found->second)),
           "a key that is not in the file has no value");
    CheckSetting(text, known, section, key, value);
  }
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  std::string rest(reinterpret_cast<const char*>(data), size);
  const std::string file = TakeField(rest);
  const std::optional<kelvara::qt::IniText> text = kelvara::qt::IniText::Parse(file);
  const std::optional<PlainSettings> expected = ReadIniPlainly(file);
  Expect(text.has_value() == expected.has_value(), "a settings file is read, another refused");
  if (text) {
    CheckValues(*text, *expected);
    CheckComesBack(*text, *expected);
  }
  // Into a file that was refused, and set aside, everything is written anew.
  CheckSettings(text.value_or(kelvara::qt::IniText()), expected.value_or(PlainSettings()), rest);
  return 0;
}
