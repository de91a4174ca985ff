#include "survey/PairGraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kelvara::survey {
namespace {

using Edges = std::vector<std::pair<int, int>>;

PairGraph GraphOf(int antennas, const Edges& edges) {
  PairGraph graph(antennas);
  for (const auto& [a, b] : edges) {
    graph.Connect(a, b);
  }
  return graph;
}

/// The parts by repeated merging, without the antenna given.
int CountParts(int antennas, const Edges& edges, int without = -1) {
  std::vector<int> label(static_cast<std::size_t>(antennas));
  for (int antenna = 0; antenna < antennas; ++antenna) {
    label[static_cast<std::size_t>(antenna)] = antenna;
  }
  int parts = without < 0 ? antennas : antennas - 1;
  for (const auto& [a, b] : edges) {
    const int one = label[static_cast<std::size_t>(a)];
    const int other = label[static_cast<std::size_t>(b)];
    if (one != other && a != without && b != without) {
      std::replace(label.begin(), label.end(), other, one);
      --parts;
    }
  }
  return parts;
}

TEST(PairGraph, AnEmptyGraphHasNoPart) {
  const GraphStructure structure = StructureOf(PairGraph(0));
  EXPECT_EQ(structure.parts, 0);
  EXPECT_TRUE(structure.partOf.empty());
  EXPECT_TRUE(structure.bridges.empty());
}

TEST(PairGraph, AnAntennaWithoutPairsIsAPart) {
  const GraphStructure structure = StructureOf(GraphOf(3, {{0, 2}}));
  EXPECT_EQ(structure.parts, 2);
  EXPECT_EQ(structure.partOf, (std::vector<int>{0, 1, 0}));
  EXPECT_EQ(structure.bridges, (Edges{{0, 2}}));
  EXPECT_EQ(structure.articulation, std::vector<bool>(3, false));
}

TEST(PairGraph, EveryPairOfAChainIsABridge) {
  const GraphStructure structure = StructureOf(GraphOf(4, {{2, 3}, {1, 0}, {1, 2}}));
  EXPECT_EQ(structure.bridges, (Edges{{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_EQ(structure.articulation, (std::vector<bool>{false, true, true, false}));
}

TEST(PairGraph, TwoTrianglesAtOneAntennaHaveNoBridge) {
  const GraphStructure structure =
      StructureOf(GraphOf(5, {{0, 1}, {1, 2}, {0, 2}, {2, 3}, {3, 4}, {2, 4}}));
  EXPECT_TRUE(structure.bridges.empty());
  EXPECT_EQ(structure.articulation, (std::vector<bool>{false, false, true, false, false}));
}

TEST(PairGraph, AgreesWithBruteForceOnRandomGraphs) {
  std::mt19937 generator(7);
  for (int graph = 0; graph < 300; ++graph) {
    const int antennas = 2 + static_cast<int>(generator() % 9);
    const unsigned density = 1 + static_cast<unsigned>(generator() % 5);
    Edges edges;
    for (int a = 0; a < antennas; ++a) {
      for (int b = a + 1; b < antennas; ++b) {
        if (generator() % 6 < density) {
          edges.emplace_back(a, b);
        }
      }
    }
    const GraphStructure structure = StructureOf(GraphOf(antennas, edges));
    const int parts = CountParts(antennas, edges);
    ASSERT_EQ(structure.parts, parts);
    Edges bridges;
    for (const auto& edge : edges) {
      Edges rest = edges;
      std::erase(rest, edge);
      if (CountParts(antennas, rest) > parts) {
        bridges.push_back(edge);
      }
      ASSERT_EQ(structure.partOf[static_cast<std::size_t>(edge.first)],
                structure.partOf[static_cast<std::size_t>(edge.second)]);
    }
    ASSERT_EQ(structure.bridges, bridges);
    for (int antenna = 0; antenna < antennas; ++antenna) {
      ASSERT_EQ(structure.articulation[static_cast<std::size_t>(antenna)],
                CountParts(antennas, edges, antenna) > parts)
          << antenna;
    }
  }
}

TEST(PairGraph, CountsCommonNeighbours) {
  PairGraph graph = GraphOf(51, {{0, 50}, {49, 50}, {0, 7}, {7, 49}, {0, 49}});
  EXPECT_EQ(graph.CommonNeighbours(0, 49), 2);
  graph.Disconnect(50, 0);
  EXPECT_EQ(graph.CommonNeighbours(0, 49), 1);
}

}  // namespace
}  // namespace kelvara::survey
