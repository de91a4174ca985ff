#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace kelvara::survey {

/// A dense symmetric matrix.
class SymmetricMatrix {
 public:
  explicit SymmetricMatrix(int size = 0)
      : size_(static_cast<std::size_t>(size)), values_(size_ * size_) {}

  double At(int row, int column) const {
    return values_[static_cast<std::size_t>(row) * size_ + static_cast<std::size_t>(column)];
  }
  double* Row(std::size_t row) { return values_.data() + row * size_; }
  const double* Row(std::size_t row) const { return values_.data() + row * size_; }

  /// At(i, i) + At(j, j) - 2 At(i, j), never below 0: the variance of a difference, if the matrix
  /// is a covariance.
  double VarianceOfDifference(int i, int j) const;

 private:
  std::size_t size_;
  std::vector<double> values_;
};

/// The normal matrix of measured differences: the Laplacian of a graph with weighted edges, some of
/// which lead to the ground, where the value is 0. Every node must be connected to the ground, if
/// only through others. It is factored without a subtraction, as L D L': all its factors keep their
/// relative accuracy, also where some weights are many powers of ten below others.
class GroundedLaplacian {
 public:
  explicit GroundedLaplacian(int nodes);

  /// Removes all edges.
  void Clear();

  /// Adds an edge between two nodes, of a weight above 0.
  void Connect(int i, int j, double weight);

  /// Adds an edge to the ground.
  void Ground(int i, double weight);

  /// Replaces the edges by the factors. Needed before the two below.
  void Factor();

  /// Replaces the right-hand side by the solution.
  void Solve(std::span<double> values) const;

  /// The inverse.
  void Invert(SymmetricMatrix& inverse) const;

 private:
  std::size_t nodes_;
  SymmetricMatrix edges_;         ///< Only the part above the diagonal is used.
  std::vector<double> diagonal_;  ///< The weights to the ground, later D.
};

}  // namespace kelvara::survey
