#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/FileSystem.h"
#include "sync/SyncModel.h"

namespace kelvara::report {

/// Writes the parts of the HTML report to an open file, in the order in which they appear there.
/// The errors in the markup (an attribute left open, bold opened twice, closing tags crossed) are
/// part of the report as sites have it on file, and are kept.
class SyncReportWriter {
 public:
  SyncReportWriter(std::unique_ptr<platform::OutputFile> file, const sync::SyncModel& model,
                   bool fpsShown, std::string today)
      : file_(std::move(file)), model_(model), fpsShown_(fpsShown), today_(std::move(today)) {}

  void WriteHead();
  void WriteSummary(std::string_view fileName, std::string_view site, std::string_view tester,
                    std::string_view notes);

  /// One row per antenna, in the order of the RPNs given. The lengths are computed here.
  void WriteCableLengths(std::span<const std::int16_t> sortedRpns);

  /// The whole matrix, in the model's order.
  void WriteRelativePhases();

  void WriteFooter();

  /// Hands everything written so far to the operating system. A write that fails is a file fault.
  void Flush();

 private:
  void WriteLine(std::initializer_list<std::string_view> pieces);
  void WriteCableLengthRow(int aa, std::int32_t metres);
  void WriteColumnHeader(int aa);
  void WriteRowHeader(int aa);
  void WritePhase(int from, int to);
  int FirstAaWithRpn(std::int16_t rpn) const;
  std::string HeaderText(int aa) const;

  std::unique_ptr<platform::OutputFile> file_;
  const sync::SyncModel& model_;
  bool fpsShown_;
  std::string today_;
  std::string pending_;
};

}  // namespace kelvara::report
