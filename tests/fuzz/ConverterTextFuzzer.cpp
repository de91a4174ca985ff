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
/// Enough for the smallest number, written with all its digits and without an exponent.
constexpr std::size_t kMostTextBytes = 350;

/// What an Update writes, or the fault that it throws.
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
           "a text that cannot be converted is not a number or too large");
    return {{}, fault.Kind()};
  }
}

bool IsUnit(Field field) { return field <= TextDelay; }

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Whether a text is a number as the converter writes it: an optional minus sign (never for 0),
/// digits, and exactly `decimals` decimals, or any number of them if that is negative.
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
  const std::string_view fraction = text.substr(point + 1);
  return IsDigits(text.substr(0, point)) && IsDigits(fraction) &&
         (decimals < 0 || fraction.size() == static_cast<std::size_t>(decimals));
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
    Expect(text.size() <= kMostTextBytes, "a field's text is short");
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
        Expect(IsWritten(text, 0), "the other fields are whole numbers");
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

/// The value of one metre in a unit.
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

/// Converting each written text back gives the source value, to the precision of its digits.
void CheckUnitsComeBack(Field source, const std::string& text, const Outcome& outcome) {
  // C reads every text that can be converted in the same way.
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
    const double valueBack = std::strtod(TextOf(back, source)->c_str(), nullptr);
    const double slack = 0.0006 + 0.0006 * PerMetre(source) / PerMetre(unit);
    Expect(std::fabs(valueBack - value) <= slack + std::fabs(value) * 1e-12,
           "what was written converts back to its source");
  }
}

/// Both bases of an RPN convert to each other and to the same port. For RPN 0 to 130 the port
/// converts back to the RPN; above that, the second range of ports overlaps the first.
void CheckIdentitiesComeBack(const Outcome& outcome, Field source, const std::string& text) {
  Converter converter;
  const std::string hexadecimal = TextOf(outcome, TextRpn).value_or(text);
  const Outcome fromHexadecimal = Update(converter, TextRpn, hexadecimal);
  if (fromHexadecimal.fault) {
    Expect(source == TextPortNum, "an RPN written in hexadecimal can be converted");
    return;
  }
  const std::string decimal = *TextOf(fromHexadecimal, TextRpnDec);
  const std::string port = *TextOf(fromHexadecimal, TextPortNum);
  const Outcome fromDecimal = Update(converter, TextRpnDec, decimal);
  Expect(TextOf(outcome, TextRpnDec).value_or(decimal) == decimal, "both bases give the same RPN");
  Expect(TextOf(fromDecimal, TextPortNum) == port, "both bases of an RPN give the same port");
  Expect(
      Update(converter, TextRpn, *TextOf(fromDecimal, TextRpn)).written == fromHexadecimal.written,
      "an RPN in its other base is the same RPN");
  const int rpn = std::atoi(decimal.c_str());
  if (rpn >= 0 && rpn <= 130) {
    Expect(TextOf(Update(converter, TextPortNum, port), TextRpnDec) == decimal,
           "a port converts back to its RPN");
  }
}

void Check(Field source, const std::string& text) {
  Converter converter;
  const Outcome outcome = Update(converter, source, text);
  CheckWritten(source, outcome);
  Expect(Update(converter, source, text) == outcome, "an Update does not affect the next");
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
