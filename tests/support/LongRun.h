#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <utility>

namespace kelvara::test {

/// What a test suite needs much real time for, done beside all other tests: it begins when the test
/// program begins, provided that a test of the suite is to run. It must not expect anything itself,
/// since another test is running meanwhile; it returns what the tests look at, or throws.
template <typename Result>
class LongRun : public testing::Environment {
 public:
  using Work = std::function<std::unique_ptr<Result>()>;

  /// Made before the test program's main function; lives as long as the program.
  static LongRun& For(const std::string& suite, Work work) {
    auto* const run = new LongRun(suite, std::move(work));
    testing::AddGlobalTestEnvironment(run);
    return *run;
  }

  /// Waits for the result; throws what the work threw.
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
