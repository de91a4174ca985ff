#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::survey {

/// Antennas as nodes and pairs as edges. The neighbours of an antenna are the bits of a word.
class PairGraph {
 public:
  explicit PairGraph(int antennas) : antennas_(antennas) {}

  void Connect(int a, int b);
  void Disconnect(int a, int b);

  int Antennas() const { return antennas_; }
  std::uint64_t Neighbours(int antenna) const {
    return neighbours_[static_cast<std::size_t>(antenna)];
  }
  int CommonNeighbours(int a, int b) const;

 private:
  static_assert(sync::kMaxAas <= 64, "the neighbours of an antenna fit in a word");

  int antennas_;
  std::array<std::uint64_t, sync::kMaxAas> neighbours_{};
};

/// How a graph hangs together.
struct GraphStructure {
  int parts = 0;
  std::vector<int> partOf;                   ///< By antenna; parts are numbered by first antenna.
  std::vector<std::pair<int, int>> bridges;  ///< Pairs whose loss splits a part, smaller end first.
  std::vector<bool> articulation;            ///< Antennas whose loss splits a part.
};

/// Finds parts, bridges and articulation antennas in one depth-first search.
GraphStructure StructureOf(const PairGraph& graph);

}  // namespace kelvara::survey
