#include "sim/SiteWalk.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "base/CheckedInteger.h"

namespace kelvara::sim {
namespace {

constexpr double kNoise = 0.75;
constexpr int kUnknownPercent = 8;
constexpr int kBlankPercent = 4;
constexpr int kFewestReports = 2;
constexpr int kMostReports = 4;
constexpr int kFewestNeighbours = 6;

}  // namespace

SiteWalk::SiteWalk(Site site, std::uint64_t seed)
    : site_(std::move(site)),
      random_(seed),
      round_(site_.size()),
      visited_(site_.size()),
      others_(site_.size()),
      nextOther_(site_.size(), 0) {
  std::iota(round_.begin(), round_.end(), std::size_t{0});
  for (std::size_t antenna = 0; antenna < site_.size(); ++antenna) {
    for (std::size_t other = 0; other < site_.size(); ++other) {
      if (other != antenna) {
        others_[antenna].push_back(other);
      }
    }
    random_.Shuffle(others_[antenna]);
  }
}

Observation SiteWalk::Next() {
  if (reportsLeft_ == 0) {
    Move();
  }
  --reportsLeft_;
  const std::size_t here = base::At(round_, static_cast<std::int64_t>(visited_) - 1);
  const std::vector<std::size_t>& others = others_[here];
  const int most = static_cast<int>(kMaxNeighbours);
  const int wanted = kFewestNeighbours + random_.Below(most - kFewestNeighbours + 1);
  const std::size_t heard = std::min(others.size(), static_cast<std::size_t>(wanted));
  Observation observation;
  observation.synchronised = site_[here];
  for (std::size_t count = 0; count < heard; ++count) {
    const Antenna& other = site_[others[nextOther_[here]]];
    observation.neighbours.push_back({other, Readings(site_[here], other)});
    nextOther_[here] = (nextOther_[here] + 1) % others.size();
  }
  return observation;
}

void SiteWalk::Move() {
  if (visited_ == site_.size()) {
    random_.Shuffle(round_);
    visited_ = 0;
  }
  ++visited_;
  reportsLeft_ = kFewestReports + random_.Below(kMostReports - kFewestReports + 1);
}

std::vector<Reading> SiteWalk::Readings(const Antenna& synchronised, const Antenna& neighbour) {
  const double phase = (synchronised.cableMetres - neighbour.cableMetres) / kMetresPerPhaseUnit;
  std::vector<Reading> readings(1 + static_cast<std::size_t>(random_.Below(kMaxReadings)));
  for (Reading& reading : readings) {
    const int roll = random_.Below(100);
    if (roll < kUnknownPercent) {
      reading.kind = Reading::Kind::Unknown;
    } else if (roll < kUnknownPercent + kBlankPercent) {
      reading.kind = Reading::Kind::Blank;
    } else {
      reading.phase = static_cast<int>(std::lround(phase + kNoise * random_.Symmetric()));
    }
  }
  return readings;
}

}  // namespace kelvara::sim
