#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "PlainConverter.h"
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

/// What an Update writes, or why it writes nothing.
struct Outcome {
  std::vector<FieldText> written;
  std::optional<PlainFault> fault;
};

Outcome Faulted(PlainFault fault) { return {{}, fault}; }

Outcome Update(Converter& converter, Field source, std::string_view text) {
  try {
    return {converter.Update(source, text), std::nullopt};
  } catch (const base::Fault& fault) {
    Expect(fault.Kind() == base::FaultKind::NotANumber || fault.Kind() == base::FaultKind::Overflow,
           "a text that cannot be converted is no number, or too large");
    return Faulted(fault.Kind() == base::FaultKind::NotANumber ? PlainFault::NotANumber
                                                               : PlainFault::Overflow);
  }
}

/// The phase and the metres that a unit's value stands for.
struct Cable {
  double rfps = 0.0;
  double metres = 0.0;
};

std::optional<Cable> CableOf(Field source, double value) {
  switch (source) {
    case TextAASync: {
      const std::optional<int> units = PlainRound16(value);
      if (!units || *units < -252 || *units > 252) {
        return std::nullopt;
      }
      return Cable{*units * 130 / 29.0, *units * 130.0};
    }
    case TextMetres:
      return Cable{value / 29, value};
    case TextOhms: {
      const double metres = value / 2 / 0.094 - 1.6;
      return Cable{metres / 29, metres};
    }
    case TextDelay:
      return Cable{value / 0.09645, value / 0.09645 * 29};
    default:
      return Cable{value, value * 29};
  }
}

Outcome UnitsPlainly(Field source, const std::string& text) {
  const PlainNumber number = PlainWholeNumber(text);
  if (number.fault) {
    return Faulted(*number.fault);
  }
  const std::optional<Cable> cable = CableOf(source, number.value);
  const std::optional<int> aaSync = cable ? PlainRound16(cable->metres / 130) : std::nullopt;
  if (!aaSync) {
    return Faulted(PlainFault::Overflow);
  }
  const FieldText rfps{TextRfps, PlainText(cable->rfps, -1)};
  const FieldText units{TextAASync, std::to_string(*aaSync)};
  const FieldText metres{TextMetres, PlainText(cable->metres, 3)};
  const FieldText ohms{TextOhms, PlainText((cable->metres + 1.6) * 0.094 * 2, 3)};
  const FieldText delay{TextDelay, PlainText(cable->rfps * 0.09645, 3)};
  switch (source) {
    case TextRfps:
      return {{ohms, metres, units, delay}, {}};
    case TextAASync:
      return {{ohms, metres, rfps, delay}, {}};
    case TextMetres:
      return {{ohms, rfps, units, delay}, {}};
    case TextOhms:
      return {{rfps, metres, units, delay}, {}};
    default:
      return {{rfps, ohms, metres, units}, {}};
  }
}

/// The value of one to eight hexadecimal digits, up to four of them having 16 bits.
std::optional<long> PlainHexadecimal(const std::string& text) {
  long value = 0;
  for (const char character : text) {
    const std::size_t digit = std::string_view("0123456789ABCDEFabcdef").find(character);
    if (digit == std::string_view::npos) {
      return std::nullopt;
    }
    value = value * 16 + static_cast<long>(digit < 16 ? digit : digit - 6);
    if (value > 0xFFFFFFFFL) {
      return std::nullopt;
    }
  }
  if (text.empty() || text.size() > 8) {
    return std::nullopt;
  }
  const long half = text.size() <= 4 ? 0x8000L : 0x80000000L;
  return value >= half ? value - 2 * half : value;
}

std::string HexadecimalOf(int rpn) {
  char text[16];
  std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(rpn) & 0xFFFFU);
  return text;
}

bool Is16Bits(long value) { return value >= -32768 && value <= 32767; }

/// What is written for an RPN: whether the port number is among it, or the other base only.
Outcome IdentityPlainly(Field source, long rpn) {
  const long port = rpn * 6 + 600;
  if (!Is16Bits(rpn) || (source != TextPortNum && (!Is16Bits(rpn * 6) || !Is16Bits(port)))) {
    return Faulted(PlainFault::Overflow);
  }
  const FieldText hexadecimal{TextRpn, HexadecimalOf(static_cast<int>(rpn))};
  const FieldText decimal{TextRpnDec, std::to_string(rpn)};
  const FieldText portNum{TextPortNum, std::to_string(port >= 984 ? port - 784 : port)};
  switch (source) {
    case TextRpn:
      return {{decimal, portNum}, {}};
    case TextRpnDec:
      return {{hexadecimal, portNum}, {}};
    default:
      return {{hexadecimal, decimal}, {}};
  }
}

Outcome PortPlainly(int port) {
  if (port < 600 && !Is16Bits(port - 200)) {
    return Faulted(PlainFault::Overflow);
  }
  const int offset = port < 600 ? port - 200 + 384 : port - 600;
  return IdentityPlainly(TextPortNum, *PlainRound16(offset / 6.0));
}

Outcome ConvertPlainly(Field source, const std::string& text) {
  if (source <= TextDelay) {
    return UnitsPlainly(source, text);
  }
  if (source == TextRpn) {
    const std::optional<long> rpn = PlainHexadecimal(text);
    return rpn ? IdentityPlainly(source, *rpn) : Faulted(PlainFault::NotANumber);
  }
  const PlainNumber number =
      source == TextRpnDec ? PlainLeadingNumber(text) : PlainWholeNumber(text);
  if (number.fault) {
    return Faulted(*number.fault);
  }
  const std::optional<int> value = PlainRound16(number.value);
  if (!value) {
    return Faulted(PlainFault::Overflow);
  }
  return source == TextRpnDec ? IdentityPlainly(source, *value) : PortPlainly(*value);
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
  const double value = PlainWholeNumber(text).value;
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
  const Outcome expected = ConvertPlainly(source, text);
  Expect(outcome.fault == expected.fault, "a text faults as the plain rules say");
  Expect(outcome.written == expected.written, "a text gives what the plain rules give");
  const Outcome again = Update(converter, source, text);
  Expect(again.fault == outcome.fault && again.written == outcome.written,
         "an Update leaves nothing behind for the next");
  for (const FieldText& fieldText : outcome.written) {
    Expect(fieldText.text.size() <= kMostTextBytes, "a field's text has an end");
  }
  if (!outcome.fault && source <= TextDelay) {
    CheckUnitsComeBack(source, text, outcome);
  } else if (!outcome.fault) {
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
