#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "base/Fault.h"
#include "convert/Converter.h"

namespace kelvara::test {
namespace {

using convert::Converter;
using convert::Field;
using convert::FieldText;
using enum convert::Field;

constexpr int kFields = 8;
/// The smallest number without an exponent, and its digits.
constexpr std::size_t kMostTextBytes = 350;

/// What an Update writes, or the fault that it ends in.
struct Outcome {
  std::vector<FieldText> written;
  std::optional<base::FaultKind> fault;

  bool operator==(const Outcome&) const = default;
};

Outcome Update(Converter& converter, Field source, std::string_view text) {
  try {
    return {converter.Update(source, text), std::nullopt};
  } catch (const base::Fault& fault) {
    Expect(fault.Kind() == base::FaultKind::NotANumber || fault.Kind() == base::FaultKind::Overflow,
           "a text that cannot be converted is no number, or too large");
    return {{}, fault.Kind()};
  }
}

bool IsUnit(Field field) { return field <= TextDelay; }

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Whether a text is a number as the converter writes it: a minus sign only before a number that is
/// not 0, digits, and that many decimals; any number of them when `decimals` is negative.
bool IsWritten(std::string_view text, int decimals) {
  if (text.starts_with('-')) {
    text.remove_prefix(1);
    if (text.find_first_not_of("0.") == std::string_view::npos) {
      return false;
    }
  }
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) {
    return IsDigits(text) && decimals <= 0;
  }
  const std::string_view behind = text.substr(point + 1);
  return IsDigits(text.substr(0, point)) && IsDigits(behind) &&
         (decimals < 0 || behind.size() == static_cast<std::size_t>(decimals));
}

bool IsHexadecimal(std::string_view text) {
  return !text.empty() && text.size() <= 4 &&
         text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

void CheckWritten(Field source, const Outcome& outcome) {
  const std::size_t others = IsUnit(source) ? 4 : 2;
  Expect(outcome.written.size() == (outcome.fault ? 0 : others),
         "all the other fields of the group are written, or none");
  for (const auto& [field, text] : outcome.written) {
    Expect(field != source && IsUnit(field) == IsUnit(source),
           "only the other fields of the group are written");
    Expect(text.size() <= kMostTextBytes, "a field's text has an end");
    switch (field) {
      case TextRfps:
        Expect(IsWritten(text, -1), "a phase is a decimal number");
        break;
      case TextMetres:
      case TextOhms:
      case TextDelay:
        Expect(IsWritten(text, 3), "a length, resistance or delay has three decimals");
        break;
      case TextRpn:
        Expect(IsHexadecimal(text), "an RPN has up to four hexadecimal digits");
        break;
      default:
        Expect(IsWritten(text, 0), "the other fields hold whole numbers");
    }
  }
}

std::optional<std::string> TextOf(const Outcome& outcome, Field field) {
  for (const FieldText& fieldText : outcome.written) {
    if (fieldText.field == field) {
      return fieldText.text;
    }
  }
  return std::nullopt;
}

/// How much of a unit one metre is.
double PerMetre(Field unit) {
  switch (unit) {
    case TextRfps:
      return 1.0 / 29;
    case TextOhms:
      return 0.188;
    case TextDelay:
      return 0.09645 / 29;
    default:
      return 1.0;
  }
}

/// What was written for a unit leads back to where it came from, as near as its digits say.
void CheckUnitsComeBack(Field source, const std::string& text, const Outcome& outcome) {
  // Every text that is converted reads the same in C.
  const double value = std::strtod(text.c_str(), nullptr);
  for (const auto& [unit, unitText] : outcome.written) {
    if (source == TextAASync || unit == TextAASync) {
      continue;
    }
    Converter converter;
    const Outcome back = Update(converter, unit, unitText);
    if (back.fault) {
      Expect(std::abs(std::atoi(TextOf(outcome, TextAASync)->c_str())) >= 32767,
             "what was written can be converted");
      continue;
    }
    const double there = std::strtod(TextOf(back, source)->c_str(), nullptr);
    const double slack = 0.0006 + 0.0006 * PerMetre(source) / PerMetre(unit);
    Expect(std::fabs(there - value) <= slack + std::fabs(value) * 1e-12,
           "what was written leads back");
  }
}

/// Both bases of an RPN lead to each other and to one port, which is the RPN's own as long as the
/// second row of ports does not run into the first.
void CheckIdentitiesComeBack(const Outcome& outcome, Field source, const std::string& text) {
  Converter converter;
  const std::string hexadecimal = TextOf(outcome, TextRpn).value_or(text);
  const Outcome fromHexadecimal = Update(converter, TextRpn, hexadecimal);
  if (fromHexadecimal.fault) {
    Expect(source == TextPortNum, "an RPN in its other base is an RPN");
    return;
  }
  const std::string decimal = *TextOf(fromHexadecimal, TextRpnDec);
  const std::string port = *TextOf(fromHexadecimal, TextPortNum);
  const Outcome fromDecimal = Update(converter, TextRpnDec, decimal);
  Expect(TextOf(outcome, TextRpnDec).value_or(decimal) == decimal, "both bases are of one RPN");
  Expect(TextOf(fromDecimal, TextPortNum) == port, "both bases of an RPN have one port");
  Expect(
      Update(converter, TextRpn, *TextOf(fromDecimal, TextRpn)).written == fromHexadecimal.written,
      "an RPN in its other base is the same RPN");
  const int rpn = std::atoi(decimal.c_str());
  if (rpn >= 0 && rpn <= 130) {
    Expect(TextOf(Update(converter, TextPortNum, port), TextRpnDec) == decimal,
           "a base port is its RPN's own");
  }
}

void Check(Field source, const std::string& text) {
  Converter converter;
  const Outcome outcome = Update(converter, source, text);
  CheckWritten(source, outcome);
  Expect(Update(converter, source, text) == outcome,
         "an Update leaves nothing behind for the next");
  if (outcome.fault) {
    Expect(!IsDigits(text) || text.size() > 2, "a number of one or two digits is converted");
  } else if (IsUnit(source)) {
    CheckUnitsComeBack(source, text, outcome);
  } else {
    CheckIdentitiesComeBack(outcome, source, text);
  }
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (int field = 0; field < kFields; ++field) {
    Check(static_cast<kelvara::convert::Field>(field), text);
  }
  return 0;
}
