#pragma once

#include <cstdint>
#include <string>

#include "QuietControls.h"
#include "sim/SiteWalk.h"
#include "sync/RfpsParser.h"
#include "sync/SyncModel.h"

namespace kelvara::bench {

enum class Density {
  Dense,   ///< Every antenna hears every other.
  Sparse,  ///< An antenna hears its neighbours in a grid, four or five others.
};

enum class Disturbance {
  None,
  BadPair,    ///< One pair that is heard is wrong.
  Multipath,  ///< A fifth of the ordered pairs is late.
};

struct SiteKind {
  int antennas = 12;
  Density density = Density::Dense;
  Disturbance disturbance = Disturbance::None;
  /// Whether each antenna can be settled: it hears three others, and its cable does not end near a
  /// step of the AA Sync units above the shortest.
  bool canSettle = false;
};

/// A site with places, in which every antenna can be reached from every other. The same kind and
/// seed give the same site; RPNs are the indices.
sim::Site MakeSite(const SiteKind& kind, std::uint64_t seed);

/// A beltpack's reports from a site, read as the program reads them, and the truth about the site.
class SimulatedSession {
 public:
  SimulatedSession(const SiteKind& kind, std::uint64_t seed);

  /// Takes reports on the beltpack's own walk.
  void Walk(int reports);

  /// Takes reports at one antenna, by its RPN.
  void StandAt(int rpn, int reports);

  const sync::SyncModel& Model() const { return model_; }

  /// The reports so far, as recorded text.
  const std::string& Text() const { return text_; }

  int Antennas() const { return static_cast<int>(site_.antennas.size()); }

  /// The true length of an antenna above the shortest one, by its RPN.
  double TrueMetres(int rpn) const;

  /// By how much the site's fault or reflections falsify the measured difference of a pair that was
  /// heard by `from`, and the other way too if it is two-way; in RFPS units.
  double PlantedBias(int from, int to, bool isTwoWay) const;

  /// Whether the pair is the site's bad one, or a reflection delays it by a unit or more.
  bool IsDisturbed(int from, int to) const;

 private:
  void Take(const sim::Observation& observation);
  double Planted(int from, int to) const;

  sim::Site site_;
  sim::SiteWalk walk_;
  /// The same paths without what disturbs them.
  sim::RadioPaths quietPaths_;
  int shortestMetres_;
  std::string text_;
  sync::SyncModel model_;
  sync::DisplayOptions options_;
  QuietLog log_;
  QuietBeeper beeper_;
  sync::RfpsParser parser_{model_, options_, log_, beeper_};
};

}  // namespace kelvara::bench
