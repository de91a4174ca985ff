#include "survey/GroundedLaplacian.h"

#include <algorithm>
#include <numeric>

namespace kelvara::survey {

double SymmetricMatrix::VarianceOfDifference(int i, int j) const {
  return std::max(At(i, i) + At(j, j) - 2.0 * At(i, j), 0.0);
}

GroundedLaplacian::GroundedLaplacian(int nodes)
    : nodes_(static_cast<std::size_t>(nodes)), edges_(nodes), diagonal_(nodes_) {}

void GroundedLaplacian::Clear() {
  for (std::size_t row = 0; row < nodes_; ++row) {
    std::fill_n(edges_.Row(row), nodes_, 0.0);
  }
  std::fill(diagonal_.begin(), diagonal_.end(), 0.0);
}

void GroundedLaplacian::Connect(int i, int j, double weight) {
  const auto [row, column] = std::minmax(i, j);
  edges_.Row(static_cast<std::size_t>(row))[column] += weight;
}

void GroundedLaplacian::Ground(int i, double weight) {
  diagonal_[static_cast<std::size_t>(i)] += weight;
}

void GroundedLaplacian::Factor() {
  // A node is eliminated by edges between each two of its neighbours and the ground. The sum of
  // its weights is the pivot.
  for (std::size_t node = 0; node < nodes_; ++node) {
    double* const edges = edges_.Row(node);
    const double ground = diagonal_[node];
    const double pivot = std::accumulate(edges + node + 1, edges + nodes_, ground);
    diagonal_[node] = pivot;
    for (std::size_t other = node + 1; other < nodes_; ++other) {
      const double share = edges[other] / pivot;
      if (share > 0.0) {
        diagonal_[other] += share * ground;
        double* const row = edges_.Row(other);
        for (std::size_t column = other + 1; column < nodes_; ++column) {
          row[column] += share * edges[column];
        }
      }
      edges[other] = share;
    }
  }
}

void GroundedLaplacian::Solve(std::span<double> values) const {
  for (std::size_t node = 0; node < nodes_; ++node) {
    const double* const shares = edges_.Row(node);
    for (std::size_t other = node + 1; other < nodes_; ++other) {
      values[other] += shares[other] * values[node];
    }
    values[node] /= diagonal_[node];
  }
  for (std::size_t node = nodes_; node-- > 0;) {
    const double* const shares = edges_.Row(node);
    for (std::size_t other = node + 1; other < nodes_; ++other) {
      values[node] += shares[other] * values[other];
    }
  }
}

void GroundedLaplacian::Invert(SymmetricMatrix& inverse) const {
  // From the last node up: a row of the inverse is the mean of its neighbours' rows, weighted by
  // their shares.
  for (std::size_t node = nodes_; node-- > 0;) {
    const double* const shares = edges_.Row(node);
    double* const row = inverse.Row(node);
    std::fill_n(row, nodes_, 0.0);
    for (std::size_t other = node + 1; other < nodes_; ++other) {
      const double share = shares[other];
      if (share > 0.0) {
        const double* const otherRow = inverse.Row(other);
        for (std::size_t column = node + 1; column < nodes_; ++column) {
          row[column] += share * otherRow[column];
        }
      }
    }
    double variance = 1.0 / diagonal_[node];
    for (std::size_t other = node + 1; other < nodes_; ++other) {
      variance += shares[other] * row[other];
      inverse.Row(other)[node] = row[other];
    }
    row[node] = variance;
  }
}

}  // namespace kelvara::survey
