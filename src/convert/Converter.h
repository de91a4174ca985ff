#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sync/DectRpn.h"

namespace kelvara::convert {

/// The fields of the converter.
enum class Field {
  TextRfps,
  TextAASync,
  TextMetres,
  TextOhms,
  TextDelay,
  TextRpn,
  TextPortNum,
  TextRpnDec,
};

/// A field and the text that an Update writes into it.
struct FieldText {
  Field field;
  std::string text;

  friend bool operator==(const FieldText&, const FieldText&) = default;
};

/// Converts between RFPS phase, AA Sync units, cable length, loop resistance and delay, and between
/// an antenna's RPN and its port number.
class Converter {
 public:
  /// Computes the other fields of the source field's group from its text. Returns their texts in
  /// the order in which to write them. A text that cannot be read, or a value outside 16 bits, is a
  /// fault; no field is to be written then.
  std::vector<FieldText> Update(Field source, std::string_view text);

 private:
  std::vector<FieldText> UpdateRpn(std::string_view text);
  std::vector<FieldText> UpdateRpnDec(std::string_view text);
  std::vector<FieldText> UpdatePortNum(std::string_view text);

  sync::DectRpn identity_;
};

}  // namespace kelvara::convert
