#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <utility>

namespace kelvara::test {

/// Slow work of a test suite that runs in the background of all other tests. It starts with the
/// test program if any test of the suite will run. It must not use expectations, since other tests
/// run meanwhile; it returns what the suite's tests check, or throws.
template <typename Result>
class LongRun : public testing::Environment {
 public:
  using Work = std::function<std::unique_ptr<Result>()>;

  /// Call before main() runs. The result exists until the program ends.
  static LongRun& For(const std::string& suite, Work work) {
    auto* const run = new LongRun(suite, std::move(work));
    testing::AddGlobalTestEnvironment(run);
    return *run;
  }

  /// Waits for the result. Throws what the work threw.
  const Result& Wait() { return *result_.get(); }

 protected:
  void SetUp() override {
    if (IsSuiteToRun()) {
      result_ = std::async(std::launch::async, work_).share();
    }
  }

 private:
  LongRun(std::string suite, Work work) : suite_(std::move(suite)), work_(std::move(work)) {}

  bool IsSuiteToRun() const {
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int index = 0; index < all.total_test_suite_count(); ++index) {
      const testing::TestSuite& suite = *all.GetTestSuite(index);
      if (suite.name() == suite_ && suite.should_run()) {
        return true;
      }
    }
    return false;
  }

  std::string suite_;
  Work work_;
  std::shared_future<std::unique_ptr<Result>> result_;
};

}  // namespace kelvara::test
