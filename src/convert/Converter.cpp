#include "convert/Converter.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

#include "base/CheckedInteger.h"
#include "base/Fault.h"
#include "base/NumberFormat.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"
#include "convert/SyncUnits.h"
#include "sync/HexPad.h"

namespace kelvara::convert {
namespace {

std::string RfpsText(const SyncUnits& units) { return base::FormatGeneral(units.rfps); }
std::string AaSyncText(const SyncUnits& units) { return std::to_string(units.aaSync); }
std::string MetresText(const SyncUnits& units) { return base::FormatFixed(units.metres); }
std::string OhmsText(const SyncUnits& units) { return base::FormatFixed(units.ohms); }
std::string DelayText(const SyncUnits& units) { return base::FormatFixed(units.delay); }

std::string HexText(std::int16_t rpn) { return sync::HexPad(rpn, 1); }

/// Reads a hexadecimal literal. Up to four digits are a 16-bit two's complement; up to eight are a
/// 32-bit one that must fit in 16 bits.
std::int16_t ReadHexadecimalLiteral(std::string_view text) {
  constexpr std::size_t kDigits16 = 4;
  constexpr std::size_t kDigits32 = 8;
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (text.empty() || text.size() > kDigits32 || error != std::errc() ||
      end != text.data() + text.size()) {
    throw base::Fault(base::FaultKind::NotANumber,
                      "Not a hexadecimal number: \"" + std::string(text) + "\"");
  }
  return text.size() <= kDigits16 ? static_cast<std::int16_t>(value)
                                  : base::ToInt16(static_cast<std::int32_t>(value));
}

}  // namespace

std::vector<FieldText> Converter::Update(Field source, std::string_view text) {
  switch (source) {
    case Field::TextRfps: {
      const SyncUnits units = FromRfps(base::ReadWholeNumber(text));
      return {{Field::TextOhms, OhmsText(units)},
              {Field::TextMetres, MetresText(units)},
              {Field::TextAASync, AaSyncText(units)},
              {Field::TextDelay, DelayText(units)}};
    }
    case Field::TextAASync: {
      const SyncUnits units = FromAaSync(base::ReadWholeNumber(text));
      return {{Field::TextOhms, OhmsText(units)},
              {Field::TextMetres, MetresText(units)},
              {Field::TextRfps, RfpsText(units)},
              {Field::TextDelay, DelayText(units)}};
    }
    case Field::TextMetres: {
      const SyncUnits units = FromMetres(base::ReadWholeNumber(text));
      return {{Field::TextOhms, OhmsText(units)},
              {Field::TextRfps, RfpsText(units)},
              {Field::TextAASync, AaSyncText(units)},
              {Field::TextDelay, DelayText(units)}};
    }
    case Field::TextOhms: {
      const SyncUnits units = FromOhms(base::ReadWholeNumber(text));
      return {{Field::TextRfps, RfpsText(units)},
              {Field::TextMetres, MetresText(units)},
              {Field::TextAASync, AaSyncText(units)},
              {Field::TextDelay, DelayText(units)}};
    }
    case Field::TextDelay: {
      const SyncUnits units = FromDelay(base::ReadWholeNumber(text));
      return {{Field::TextRfps, RfpsText(units)},
              {Field::TextOhms, OhmsText(units)},
              {Field::TextMetres, MetresText(units)},
              {Field::TextAASync, AaSyncText(units)}};
    }
    case Field::TextRpn:
      return UpdateRpn(text);
    case Field::TextRpnDec:
      return UpdateRpnDec(text);
    case Field::TextPortNum:
      return UpdatePortNum(text);
  }
  return {};
}

std::vector<FieldText> Converter::UpdateRpn(std::string_view text) {
  identity_.SetRpn(ReadHexadecimalLiteral(text));
  return {{Field::TextRpnDec, std::to_string(identity_.iRpn())},
          {Field::TextPortNum, std::to_string(identity_.iPortNum())}};
}

std::vector<FieldText> Converter::UpdateRpnDec(std::string_view text) {
  identity_.SetRpn(base::Round16(base::ReadLeadingNumber(text, base::Blanks::Anywhere)));
  return {{Field::TextRpn, HexText(identity_.iRpn())},
          {Field::TextPortNum, std::to_string(identity_.iPortNum())}};
}

std::vector<FieldText> Converter::UpdatePortNum(std::string_view text) {
  identity_.SetPortNum(base::Round16(base::ReadWholeNumber(text)));
  return {{Field::TextRpn, HexText(identity_.iRpn())},
          {Field::TextRpnDec, std::to_string(identity_.iRpn())}};
}

}  // namespace kelvara::convert
