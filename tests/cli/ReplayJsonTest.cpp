#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/ConsoleTest.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

class ReplayJsonTest : public ConsoleTest {
 protected:
  static QJsonObject Parsed(const std::string& text) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    EXPECT_TRUE(document.isObject());
    return document.object();
  }

  QJsonObject Results(Arguments arguments) {
    arguments.insert(arguments.begin(), "replay");
    arguments.insert(arguments.end(), {"--json", "-"});
    return Parsed(Output(arguments));
  }

  static std::string GridText(const QJsonObject& results, int row, int column) {
    return results["grid"]["text"][row][column].toString("(no text)").toStdString();
  }
};

TEST_F(ReplayJsonTest, RecordedSessionsGiveTheirGoldenResults) {
  for (const std::string name : {"four-antennas", "fifty-one-antennas"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Results({GoldenPath(name + ".session.txt")}),
              Parsed(Golden("json-" + name + ".json")));
  }
}

TEST_F(ReplayJsonTest, AnEmptyFileGivesEmptyResults) {
  Write("empty.txt", "");
  EXPECT_EQ(Results({"--whole", "empty.txt"}), Parsed(Golden("json-empty.json")));
}

TEST_F(ReplayJsonTest, StandardOutputContainsOnlyTheDocument) {
  const std::string text =
      Output({"replay", GoldenPath("four-antennas.session.txt"), "--json", "-"});
  EXPECT_EQ(text[0], '{');
  EXPECT_EQ(text.find("Reports:"), std::string::npos);
  EXPECT_EQ(text.substr(text.size() - 2), "}\n");
}

TEST_F(ReplayJsonTest, AFileContainsTheSameDocumentAndTheTotalsArePrinted) {
  const std::string session = GoldenPath("four-antennas.session.txt");
  Write("results.json", std::string(100000, 'x'));
  EXPECT_EQ(Output({"replay", session, "--json", "results.json"}), "Reports: 7\nAAs: 4\n");
  EXPECT_EQ(Read("results.json"), Output({"replay", session, "--json", "-"}));
}

TEST_F(ReplayJsonTest, TheGridFollowsTheDisplayOptions) {
  const QJsonObject results = Results({GoldenPath("four-antennas.session.txt"), "--units", "metres",
                                       "--rpn", "hex", "--fps", "on"});
  EXPECT_EQ(GridText(results, 0, 0), "RPN");
  EXPECT_EQ(GridText(results, 0, 4), "64[F]");
  EXPECT_EQ(GridText(results, 2, 0), "06[A]");
  EXPECT_EQ(GridText(results, 1, 2), "260");
  EXPECT_EQ(GridText(results, 1, 3), "-390");
  EXPECT_EQ(results["cells"][0]["sum"].toInt(), 15);
}

TEST_F(ReplayJsonTest, AbandonedReportsAreCounted) {
  Write("crowded.txt", CrowdedReport(1, 2, 10) + OneNeighbourReport(1, 2, -11));
  const QJsonObject results = Results({"crowded.txt"});
  EXPECT_EQ(results["reports"].toInt(), 1);
  EXPECT_EQ(results["abandoned"].toInt(), 1);
  EXPECT_EQ(results["aas"].toArray().size(), 2);
}

TEST_F(ReplayJsonTest, OneAntennaTooManyLeavesTheGridIncomplete) {
  Write("many.txt", FiftyTwoAntennas());
  const QJsonObject results = Results({"many.txt"});
  EXPECT_EQ(results["reports"].toInt(), 5);
  EXPECT_EQ(results["abandoned"].toInt(), 1);
  const QJsonArray aas = results["aas"].toArray();
  ASSERT_EQ(aas.size(), 51);
  EXPECT_EQ(aas[0]["rpn"].toInt(), 0);
  EXPECT_EQ(aas[1]["rpn"].toInt(), 9);
  EXPECT_EQ(aas[50]["rpn"].toInt(), 47);
  const QJsonObject grid = results["grid"].toObject();
  EXPECT_TRUE(grid["complete"].isBool());
  EXPECT_FALSE(grid["complete"].toBool());
  const QJsonArray rows = grid["text"].toArray();
  ASSERT_EQ(rows.size(), 53);
  ASSERT_EQ(grid["colour"].toArray().size(), 53);
  for (int row = 0; row < 53; ++row) {
    ASSERT_EQ(rows[row].toArray().size(), 53) << row;
    ASSERT_EQ(grid["colour"][row].toArray().size(), 53) << row;
    for (int column = 0; column < 53; ++column) {
      const bool drawn = row == 0 && column <= 51;
      ASSERT_EQ(GridText(results, row, column).empty(), !drawn) << row << ", " << column;
      ASSERT_TRUE(grid["colour"][row][column].isNull()) << row << ", " << column;
    }
  }
  EXPECT_EQ(GridText(results, 0, 51), "47");
}

}  // namespace
}  // namespace kelvara::test
