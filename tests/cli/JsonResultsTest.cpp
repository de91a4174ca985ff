#include "cli/JsonResults.h"

#include <gtest/gtest.h>

#include "app/SessionRig.h"
#include "support/ReportText.h"

namespace kelvara::cli {
namespace {

TEST(JsonResults, OfNothingAreEmptyLists) {
  const test::SessionRig rig;
  EXPECT_EQ(JsonResults(rig.session, rig.grid, true),
            "{\"reports\": 0, \"abandoned\": 0,\n"
            "  \"aas\": [],\n"
            "  \"cells\": [],\n"
            "  \"grid\": {\"complete\": true,\n"
            "    \"text\": [[\"RPN\"]],\n"
            "    \"colour\": [[null]]}}\n");
}

TEST(JsonResults, HoldAntennasReadingsAndTheGridAsItWasDrawn) {
  test::SessionRig rig;
  rig.session.Parser().ProcessRfpsReport(
      test::Report({test::SyncBlock(test::Identity(0x5A, 3, 1)),
                    test::NeighbourBlock(test::Identity(0x5A, 0, 2), {"-12", " -9"})}));
  ASSERT_TRUE(rig.session.Grid().UpdateSyncGrid());
  EXPECT_EQ(JsonResults(rig.session, rig.grid, false),
            "{\"reports\": 1, \"abandoned\": 0,\n"
            "  \"aas\": [{\"rpn\": 1, \"fps\": 3, \"fpn\": 90},\n"
            "    {\"rpn\": 2, \"fps\": 0, \"fpn\": 90}],\n"
            "  \"cells\": [{\"from\": 0, \"to\": 1, \"sum\": -10, \"count\": 1, "
            "\"max\": -10, \"min\": -10}],\n"
            "  \"grid\": {\"complete\": false,\n"
            "    \"text\": [[\"RPN\", \"01\", \"02\"],\n"
            "      [\"01\", \"\", \"-10\"],\n"
            "      [\"02\", \"\", \"\"]],\n"
            "    \"colour\": [[null, null, null],\n"
            "      [null, \"#c0c0c0\", \"#ffffff\"],\n"
            "      [null, \"#e6e6ff\", \"#c0c0c0\"]]}}\n");
}

}  // namespace
}  // namespace kelvara::cli
