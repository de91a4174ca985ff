#include "sync/Totals.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"

namespace kelvara::sync {
namespace {

using platform::StatusPanel;

TEST(Totals, StandInTheThirdAndFourthPanelAsPlainNumbers) {
  SyncModel model;
  test::RecordingStatusBar statusBar;
  ShowTotals(model, statusBar);
  EXPECT_EQ(statusBar.panels[StatusPanel::Reports], "Reports: 0");
  EXPECT_EQ(statusBar.panels[StatusPanel::Aas], "AAs: 0");

  for (std::int16_t rpn = 0; rpn < 12; ++rpn) {
    model.FindOrAddAa(rpn, 0, 0);
    model.CountReport();
  }
  model.CountReport();
  ShowTotals(model, statusBar);
  EXPECT_EQ(statusBar.panels[StatusPanel::Reports], "Reports: 13");
  EXPECT_EQ(statusBar.panels[StatusPanel::Aas], "AAs: 12");
  EXPECT_EQ(statusBar.panels.size(), 2U);
}

}  // namespace
}  // namespace kelvara::sync
