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
      // Numbers of its own: a site without places, reflections and faults draws none of the walk's.
      paths_(site_, ~seed),
      random_(seed),
      hasPlaces_(std::any_of(site_.antennas.begin(), site_.antennas.end(),
                             [](const Antenna& antenna) { return antenna.place.has_value(); })),
      round_(site_.antennas.size()),
      visited_(site_.antennas.size()),
      visits_(site_.antennas.size()),
      nextOther_(site_.antennas.size(), 0) {
  std::iota(round_.begin(), round_.end(), std::size_t{0});
  for (const std::size_t antenna : round_) {
    others_.push_back(paths_.Heard(antenna));
    random_.Shuffle(others_.back());
  }
}

Observation SiteWalk::Next() {
  if (reportsLeft_ == 0) {
    Move();
    reportsLeft_ = kFewestReports + random_.Below(kMostReports - kFewestReports + 1);
  }
  --reportsLeft_;
  return NextAt(here_);
}

Observation SiteWalk::NextAt(std::size_t antenna) {
  const std::size_t here = base::CheckedIndex(static_cast<std::int64_t>(antenna), others_.size());
  const std::vector<std::size_t>& others = others_[here];
  const int most = static_cast<int>(kMaxNeighbours);
  const int wanted = kFewestNeighbours + random_.Below(most - kFewestNeighbours + 1);
  const std::size_t heard = std::min(others.size(), static_cast<std::size_t>(wanted));
  Observation observation;
  observation.synchronised = site_.antennas[here];
  for (std::size_t count = 0; count < heard; ++count) {
    const std::size_t other = others[nextOther_[here]];
    observation.neighbours.push_back({site_.antennas[other], Readings(here, other)});
    nextOther_[here] = (nextOther_[here] + 1) % others.size();
  }
  return observation;
}

void SiteWalk::Move() {
  if (hasPlaces_) {
    MoveOn();
    return;
  }
  if (visited_ == site_.antennas.size()) {
    random_.Shuffle(round_);
    visited_ = 0;
  }
  ++visited_;
  here_ = base::At(round_, static_cast<std::int64_t>(visited_) - 1);
}

void SiteWalk::MoveOn() {
  // Shuffled, so that the first of several equals is a random one.
  random_.Shuffle(round_);
  const auto isVisitedLess = [&](std::size_t one, std::size_t other) {
    return visits_[one] < visits_[other];
  };
  const std::size_t least = *std::min_element(round_.begin(), round_.end(), isVisitedLess);
  const bool isPartDone = std::all_of(round_.begin(), round_.end(), [&](std::size_t antenna) {
    return !paths_.AreJoined(antenna, here_) || isVisitedLess(least, antenna);
  });
  if (isPartDone || visits_[here_] == 0) {
    here_ = least;
  } else if (!others_[here_].empty()) {
    std::vector<std::size_t> heard = others_[here_];
    random_.Shuffle(heard);
    here_ = *std::min_element(heard.begin(), heard.end(), isVisitedLess);
  }
  ++visits_[here_];
}

std::vector<Reading> SiteWalk::Readings(std::size_t synchronised, std::size_t neighbour) {
  const int metres =
      site_.antennas[synchronised].cableMetres - site_.antennas[neighbour].cableMetres;
  const double phase = metres / kMetresPerPhaseUnit - paths_.Lateness(synchronised, neighbour);
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
