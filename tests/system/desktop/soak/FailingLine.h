#pragma once

#include <chrono>
#include <map>
#include <random>
#include <string>

#include "system/SimulatedBeltpack.h"

namespace kelvara::test {

/// A beltpack line that fails and recovers from time to time.
class FailingLine {
 public:
  FailingLine(SimulatedBeltpack& beltpack, std::mt19937& chance);

  /// Starts or ends a fault when it is due.
  void Turn();

  /// Ends the current fault, if any.
  void Repair();

  /// How often each fault has started.
  const std::map<std::string, int>& Counts() const { return counts_; }

 private:
  using Clock = std::chrono::steady_clock;

  void Fail();
  void LeaveFor(int leastSeconds, int mostSeconds);
  int Between(int least, int most);

  SimulatedBeltpack& beltpack_;
  std::mt19937& chance_;
  std::map<std::string, int> counts_;
  Clock::time_point change_ = Clock::now() + std::chrono::seconds(10);
  bool isUnplugged_ = false;
  bool isFailing_ = false;
};

}  // namespace kelvara::test
