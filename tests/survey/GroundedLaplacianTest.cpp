#include "survey/GroundedLaplacian.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace kelvara::survey {
namespace {

TEST(GroundedLaplacian, InvertsAChain) {
  GroundedLaplacian equations(2);
  equations.Ground(0, 4.0);
  equations.Connect(1, 0, 2.0);
  equations.Factor();
  SymmetricMatrix inverse(2);
  equations.Invert(inverse);
  EXPECT_DOUBLE_EQ(inverse.At(0, 0), 0.25);
  EXPECT_DOUBLE_EQ(inverse.At(0, 1), 0.25);
  EXPECT_DOUBLE_EQ(inverse.At(1, 0), 0.25);
  EXPECT_DOUBLE_EQ(inverse.At(1, 1), 0.75);
  EXPECT_DOUBLE_EQ(inverse.VarianceOfDifference(0, 1), 0.5);
}

TEST(GroundedLaplacian, TheInverseTimesTheMatrixIsTheIdentity) {
  constexpr int kNodes = 12;
  std::mt19937 generator(3);
  GroundedLaplacian equations(kNodes);
  SymmetricMatrix matrix(kNodes);
  const auto add = [&](int row, int column, double value) {
    matrix.Row(static_cast<std::size_t>(row))[column] += value;
  };
  equations.Ground(5, 1.5);
  add(5, 5, 1.5);
  for (int i = 0; i < kNodes; ++i) {
    for (int j = i + 1; j < kNodes; ++j) {
      if (j == i + 1 || generator() % 3 == 0) {
        const double weight = 0.1 + static_cast<double>(generator() % 1000) / 100.0;
        equations.Connect(i, j, weight);
        add(i, i, weight);
        add(j, j, weight);
        add(i, j, -weight);
        add(j, i, -weight);
      }
    }
  }
  equations.Factor();
  SymmetricMatrix inverse(kNodes);
  equations.Invert(inverse);
  for (int column = 0; column < kNodes; ++column) {
    std::vector<double> solution(kNodes);
    solution[static_cast<std::size_t>(column)] = 1.0;
    equations.Solve(solution);
    for (int row = 0; row < kNodes; ++row) {
      double product = 0.0;
      for (int inner = 0; inner < kNodes; ++inner) {
        product += matrix.At(row, inner) * inverse.At(inner, column);
      }
      EXPECT_NEAR(product, row == column ? 1.0 : 0.0, 1e-12);
      EXPECT_NEAR(solution[static_cast<std::size_t>(row)], inverse.At(row, column), 1e-12);
      EXPECT_EQ(inverse.At(row, column), inverse.At(column, row));
    }
  }
}

// By subtraction, the weak edge would be lost in the rounding of the strong ones.
TEST(GroundedLaplacian, KeepsAnEdgeThatIsSixteenPowersOfTenWeaker) {
  GroundedLaplacian equations(3);
  equations.Ground(0, 1e-12);
  equations.Connect(0, 1, 1e4);
  equations.Connect(1, 2, 1e4);
  equations.Connect(0, 2, 1e4);
  equations.Factor();
  SymmetricMatrix inverse(3);
  equations.Invert(inverse);
  for (int node = 0; node < 3; ++node) {
    EXPECT_NEAR(inverse.At(node, node), 1e12, 1.0);
  }
}

}  // namespace
}  // namespace kelvara::survey
