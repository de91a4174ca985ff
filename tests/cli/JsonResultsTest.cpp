#include "cli/JsonResults.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

#include "app/SessionRig.h"
#include "support/ReportText.h"

namespace kelvara::cli {
namespace {

/// Parses a text that must be one JSON document.
QJsonDocument Parsed(const std::string& text) {
  QJsonParseError error;
  QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << text;
  return document;
}

TEST(JsonResults, OfAnEmptyModelAreEmptyLists) {
  const test::SessionRig rig;
  EXPECT_EQ(Parsed(JsonResults(rig.session, rig.grid, true)), Parsed(R"(
      {"reports": 0, "abandoned": 0, "aas": [], "cells": [],
       "grid": {"complete": true, "text": [["RPN"]], "colour": [[null]]}})"));
}

TEST(JsonResults, HoldAntennasReadingsAndTheGridAsDrawn) {
  test::SessionRig rig;
  rig.session.Parser().ProcessRfpsReport(
      test::Report({test::SyncBlock(test::Identity(0x5A, 3, 1)),
                    test::NeighbourBlock(test::Identity(0x5A, 0, 2), {"-12", " -9"})}));
  ASSERT_TRUE(rig.session.Grid().UpdateSyncGrid());
  EXPECT_EQ(Parsed(JsonResults(rig.session, rig.grid, false)), Parsed(R"(
      {"reports": 1, "abandoned": 0,
       "aas": [{"rpn": 1, "fps": 3, "fpn": 90}, {"rpn": 2, "fps": 0, "fpn": 90}],
       "cells": [{"from": 0, "to": 1, "sum": -10, "count": 1, "max": -10, "min": -10}],
       "grid": {"complete": false,
         "text": [["RPN", "01", "02"], ["01", "", "-10"], ["02", "", ""]],
         "colour": [[null, null, null], [null, "#c0c0c0", "#ffffff"],
                    [null, "#e6e6ff", "#c0c0c0"]]}})"));
}

TEST(JsonResults, WriteEveryNumberAsAnInteger) {
  test::SessionRig rig;
  const std::string report =
      test::Report({test::SyncBlock(test::Identity(0x5A, 3, 1)),
                    test::NeighbourBlock(test::Identity(0x5A, 0, 2), {"999"})});
  constexpr int kReports = 1200;
  for (int count = 0; count < kReports; ++count) {
    rig.session.Parser().ProcessRfpsReport(report);
  }
  const std::string json = JsonResults(rig.session, rig.grid, true);
  for (const char* const member : {"\"count\":1200,", "\"sum\":1198800,", "\"reports\":1200}"}) {
    EXPECT_NE(json.find(member), std::string::npos) << json;
  }
}

}  // namespace
}  // namespace kelvara::cli
