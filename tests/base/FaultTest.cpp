#include "base/Fault.h"

#include <gtest/gtest.h>

namespace kelvara::base {
namespace {

TEST(Fault, CarriesItsTextAndItsKind) {
  try {
    throw Fault(FaultKind::File, "cannot open a.csv");
  } catch (const std::exception& caught) {
    EXPECT_STREQ(caught.what(), "cannot open a.csv");
    const auto* fault = dynamic_cast<const Fault*>(&caught);
    ASSERT_NE(fault, nullptr);
    EXPECT_EQ(fault->Kind(), FaultKind::File);
  }
}

}  // namespace
}  // namespace kelvara::base
