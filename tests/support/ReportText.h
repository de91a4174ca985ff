#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

/// RFPS reports as a beltpack sends them.
namespace kelvara::test {

/// One hexadecimal digit, 0 to 15.
inline char HexDigit(int value) { return "0123456789ABCDEF"[value]; }

/// The ten characters of an antenna's identity: marker, FPN, FPS, RPN.
inline std::string Identity(int fpn, int fps, int rpn) {
  std::string text = "100ec";
  for (const int digit : {fpn / 16, fpn % 16, fps, rpn / 16, rpn % 16}) {
    text += HexDigit(digit);
  }
  return text;
}

inline std::string CrLf(const std::string& line) { return line + "\r\n"; }

/// A reading without its line end. The phase field of three characters is 19 characters after the
/// "N".
inline std::string ReadingText(std::string_view field) {
  std::string text = "Neighbour phase =  ";
  text += field;
  return text;
}

inline std::string Reading(std::string_view field) { return CrLf(ReadingText(field)); }

inline std::string SyncText(const std::string& identity) { return identity + " Sync"; }

inline std::string SyncBlock(const std::string& identity) { return CrLf(SyncText(identity)); }

inline std::string NeighbourBlock(const std::string& identity,
                                  std::initializer_list<std::string_view> fields) {
  std::string text = identity;
  text += ' ';
  for (const std::string_view field : fields) {
    text += Reading(field);
  }
  return text;
}

/// The whole report: the echoed command, then the blocks.
inline std::string Report(std::initializer_list<std::string> blocks) {
  std::string text = "rfps\r\n";
  for (const std::string& block : blocks) {
    text += block;
  }
  return text;
}

/// A report in which the antenna `syncRpn` hears `neighbours` others, from `firstRpn` on, all with
/// FPS 3, FPN 5A and phase 5.
inline std::string ReportOfMany(int syncRpn, int firstRpn, int neighbours) {
  std::string text = "rfps\r\n" + SyncBlock(Identity(0x5A, 3, syncRpn));
  for (int rpn = firstRpn; rpn < firstRpn + neighbours; ++rpn) {
    text += NeighbourBlock(Identity(0x5A, 3, rpn), {"  5"});
  }
  return text;
}

/// RPN 1 hears RPN 2 at phases -12 and -10, RPN 4 at an unknown phase, RPN 6 at 6, 7 and 9.
inline std::string ExampleReport() {
  return "rfps\r\n"
         "100ec5A301 Sync\r\n"
         "100ec5A302 Neighbour phase =  -12\r\n"
         "           Neighbour phase =  -10\r\n"
         "100ec5A304 Neighbour phase =    ?\r\n"
         "100ec5A306 Neighbour phase =    6\r\n"
         "           Neighbour phase =    7\r\n"
         "           Neighbour phase =    9\r\n";
}

}  // namespace kelvara::test
