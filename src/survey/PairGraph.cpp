#include "survey/PairGraph.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace kelvara::survey {
namespace {

constexpr std::uint64_t Bit(int antenna) {
  return std::uint64_t{1} << static_cast<unsigned>(antenna);
}

/// Tarjan's search. `low_` is the earliest antenna that can be reached from an antenna's subtree
/// without the edge to its parent.
class Search {
 public:
  explicit Search(const PairGraph& graph)
      : graph_(graph), order_(Size(), kUnseen), low_(Size(), kUnseen) {
    result_.partOf.assign(Size(), 0);
    result_.articulation.assign(Size(), false);
  }

  GraphStructure Run() {
    for (int antenna = 0; antenna < graph_.Antennas(); ++antenna) {
      if (order_[Index(antenna)] == kUnseen) {
        Visit(antenna, kUnseen);
        ++result_.parts;
      }
    }
    std::sort(result_.bridges.begin(), result_.bridges.end());
    return std::move(result_);
  }

 private:
  static constexpr int kUnseen = -1;

  static std::size_t Index(int antenna) { return static_cast<std::size_t>(antenna); }
  std::size_t Size() const { return Index(graph_.Antennas()); }

  void Visit(int antenna, int parent) {
    order_[Index(antenna)] = low_[Index(antenna)] = next_++;
    result_.partOf[Index(antenna)] = result_.parts;
    int children = 0;
    bool separates = false;
    for (std::uint64_t left = graph_.Neighbours(antenna); left != 0; left &= left - 1) {
      const int neighbour = std::countr_zero(left);
      if (neighbour == parent) {
        continue;
      }
      if (order_[Index(neighbour)] != kUnseen) {
        low_[Index(antenna)] = std::min(low_[Index(antenna)], order_[Index(neighbour)]);
        continue;
      }
      ++children;
      Visit(neighbour, antenna);
      low_[Index(antenna)] = std::min(low_[Index(antenna)], low_[Index(neighbour)]);
      separates = separates || low_[Index(neighbour)] >= order_[Index(antenna)];
      if (low_[Index(neighbour)] > order_[Index(antenna)]) {
        result_.bridges.emplace_back(std::minmax(antenna, neighbour));
      }
    }
    result_.articulation[Index(antenna)] = parent == kUnseen ? children > 1 : separates;
  }

  const PairGraph& graph_;
  std::vector<int> order_;
  std::vector<int> low_;
  int next_ = 0;
  GraphStructure result_;
};

}  // namespace

void PairGraph::Connect(int a, int b) {
  neighbours_[static_cast<std::size_t>(a)] |= Bit(b);
  neighbours_[static_cast<std::size_t>(b)] |= Bit(a);
}

void PairGraph::Disconnect(int a, int b) {
  neighbours_[static_cast<std::size_t>(a)] &= ~Bit(b);
  neighbours_[static_cast<std::size_t>(b)] &= ~Bit(a);
}

int PairGraph::CommonNeighbours(int a, int b) const {
  return std::popcount(Neighbours(a) & Neighbours(b));
}

GraphStructure StructureOf(const PairGraph& graph) { return Search(graph).Run(); }

}  // namespace kelvara::survey
