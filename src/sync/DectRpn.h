#pragma once

#include <cstdint>

namespace kelvara::sync {

/// The identity of an active antenna: its RPN, and the port number that the installation uses for
/// it. Each RPN covers six port numbers; its base port is counted from 600 up to 978 and then from
/// 200. Only the RPN is stored. All arithmetic is 16-bit; a result outside 16 bits is an overflow
/// fault and changes nothing.
class DectRpn {
 public:
  void SetRpn(std::int16_t rpn) { iRpn_ = rpn; }
  std::int16_t iRpn() const { return iRpn_; }

  /// Stores the RPN with the nearest base port. Halfway between two, the even RPN is stored.
  void SetPortNum(std::int16_t portNum);

  /// The base port of the stored RPN. Above RPN 63 it wraps to 200, so port 984 gives RPN 64 and
  /// RPN 64 gives port 200.
  std::int16_t iPortNum() const;

 private:
  std::int16_t iRpn_ = 0;
};

}  // namespace kelvara::sync
