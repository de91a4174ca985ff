#pragma once

#include <cstdint>

namespace kelvara::sync {

/// One active antenna's identity: its RPN, and the port number that the installation knows it by.
/// Each RPN stands for six port numbers, counted from 600 up to 978 and from 200 on. Only the RPN
/// is stored. All arithmetic is 16-bit; leaving it is an overflow fault and changes nothing.
class DectRpn {
 public:
  void SetRpn(std::int16_t rpn) { iRpn_ = rpn; }
  std::int16_t iRpn() const { return iRpn_; }

  /// Stores the RPN whose base port is nearest; halfway between two goes to the even RPN.
  void SetPortNum(std::int16_t portNum);

  /// The base port of the stored RPN. Above RPN 63 it wraps to 200, so port 984 gives RPN 64 and
  /// RPN 64 gives port 200.
  std::int16_t iPortNum() const;

 private:
  std::int16_t iRpn_ = 0;
};

}  // namespace kelvara::sync
