#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelvara::sync {

/// The maximum number of antennas in the model.
inline constexpr std::size_t kMaxAas = 51;

/// The phases of one antenna as heard while synchronised to another, in RFPS units. If `Count` is
/// 0, there is no data and `Max` and `Min` hold their cleared values.
struct PhaseCell {
  static constexpr std::int16_t kClearedMax = -32767;
  static constexpr std::int16_t kClearedMin = 32767;

  std::int32_t Sum = 0;
  std::int32_t Count = 0;
  std::int16_t Max = kClearedMax;
  std::int16_t Min = kClearedMin;

  /// The mean phase, not rounded. `Count` must not be 0.
  double Mean() const { return static_cast<double>(Sum) / Count; }
};

/// One phase as it was added to a cell.
struct Reading {
  std::int16_t from = 0;
  std::int16_t to = 0;
  std::int16_t phase = 0;
};

/// Everything learned from RFPS reports since the last clear: the antennas in order of first
/// appearance, and for every ordered pair of them the phase of one as heard while synchronised to
/// the other. Table indices are checked: one outside 0 to 50 is a subscript fault.
class SyncModel {
 public:
  /// Empties the model.
  void Clear();

  /// Returns the index of the antenna with this RPN, which is added if it is new. Only the RPN is
  /// compared: a known antenna keeps the FPS and FPN with which it was added. The 52nd antenna is a
  /// subscript fault, and the count stays at 52 from then on.
  std::int16_t FindOrAddAa(std::int16_t rpn, std::int16_t fps, std::int16_t fpn);

  /// Begins a report: the phases added from now on are those of the last report.
  void BeginReport();

  /// Adds one mean phase to the cell (from, to).
  void AddPhase(std::int16_t from, std::int16_t to, std::int16_t phase);

  /// Counts one processed report.
  void CountReport();

  /// Puts results that were cleared before those of the model, as if there had been no clear: the
  /// older antennas come first, sums, counts and reports are added, maxima and minima widened. Also
  /// counts as a clear, because the indices change. More than 51 antennas are a subscript fault, a
  /// number that grows too large is an overflow fault; the model is then unchanged.
  void AddOlder(const SyncModel& older);

  /// Replaces a cell and the number of reports, to restore results that were stored.
  void SetCell(int from, int to, const PhaseCell& cell);
  void SetReportCount(std::int32_t reports) { reportCount_ = reports; }

  /// Also keeps every reading that is added from now on, in order. A clear removes those kept.
  void KeepReadings() { keepsReadings_ = true; }
  const std::vector<Reading>& Readings() const { return readings_; }

  /// What the last report has added since it began, in order. Empty after a clear.
  const std::vector<Reading>& LastReport() const { return lastReport_; }

  /// Changes with every report that begins, and when results are cleared or restored.
  std::uint64_t LastReportNumber() const { return lastReportNumber_; }

  /// 0 to 51, or 52 once a 52nd antenna has been refused.
  std::int16_t AaCount() const { return aaCount_; }
  std::int16_t AaRpn(int index) const;
  std::int16_t AaFps(int index) const;
  std::int16_t AaFpn(int index) const;

  /// The cell of the antenna `to` as heard while synchronised to the antenna `from`.
  const PhaseCell& Cell(int from, int to) const;

  /// Reports processed since the last clear.
  std::int32_t ReportCount() const { return reportCount_; }

  /// How often the model has been cleared. A loop that lets events run can tell from it that the
  /// data it was showing is gone.
  std::uint64_t ClearCount() const { return clearCount_; }

 private:
  using AaTable = std::array<std::int16_t, kMaxAas>;

  int ListedAas() const;
  void AddNewer(const SyncModel& newer);
  AaTable AddAntennasOf(const SyncModel& newer);

  std::int16_t aaCount_ = 0;
  std::int32_t reportCount_ = 0;
  std::uint64_t clearCount_ = 0;
  AaTable aaRpn_{};
  AaTable aaFps_{};
  AaTable aaFpn_{};
  std::array<std::array<PhaseCell, kMaxAas>, kMaxAas> cells_{};
  bool keepsReadings_ = false;
  std::vector<Reading> readings_;
  std::uint64_t lastReportNumber_ = 0;
  std::vector<Reading> lastReport_;
};

}  // namespace kelvara::sync
