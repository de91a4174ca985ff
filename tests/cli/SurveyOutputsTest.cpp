#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

#include "cli/ConsoleTest.h"
#include "platform/qt/Text.h"
#include "support/Golden.h"
#include "support/RecordedReports.h"

namespace kelvara::test {
namespace {

class SurveyOutputsTest : public ConsoleTest {
 protected:
  QJsonObject Survey(Arguments arguments, const std::string& input = "") {
    arguments.insert(arguments.begin(), "survey");
    arguments.insert(arguments.end(), {"--json", "-"});
    return QJsonDocument::fromJson(QByteArray::fromStdString(Output(arguments, input))).object();
  }

  static std::string Keys(const QJsonValue& object) {
    return object.toObject().keys().join(" ").toStdString();
  }

  /// Antennas 1, 2 and 3 at 0, 261 and 522 m, antenna 3 longer by so many RFPS units.
  static std::string Triangle(int longer) {
    std::string text;
    for (int round = 0; round < 3; ++round) {
      text += RecordedReport({SyncLine(1), NeighbourLine(2, -9), NeighbourLine(3, -18 - longer)});
      text += RecordedReport({SyncLine(2), NeighbourLine(1, 9), NeighbourLine(3, -9 - longer)});
      text += RecordedReport(
          {SyncLine(3), NeighbourLine(1, 18 + longer), NeighbourLine(2, 9 + longer)});
    }
    return text;
  }

  const std::string session = GoldenPath("four-antennas.session.txt");
};

TEST_F(SurveyOutputsTest, ARecordedSessionGivesItsGoldenText) {
  for (const std::string name : {"four-antennas", "fifty-one-antennas"}) {
    ExpectSameText(Output({"survey", GoldenPath(name + ".session.txt")}),
                   Golden("survey-" + name + ".txt"));
  }
}

TEST_F(SurveyOutputsTest, TheExampleOfASparseSiteNamesItsBadPairAndWhereTheReportIsWrong) {
  const std::string sparse = GoldenPath("../../examples/sparse-session.trace");
  ExpectSameText(Output({"survey", sparse}), Golden("survey-sparse-session.txt"));
  const QJsonObject survey = Survey({sparse});
  ASSERT_EQ(survey["suspects"].toArray().size(), 1);
  const QJsonValue suspect = survey["suspects"][0];
  EXPECT_EQ(suspect["a"], 16);
  EXPECT_EQ(suspect["b"], 15);
  EXPECT_NEAR(suspect["residual"].toDouble(), -12.0, 1.0);
}

/// Compares documents whose numbers may differ by rounding errors.
void ExpectSameJson(const QJsonValue& actual, const QJsonValue& expected,
                    const std::string& where) {
  ASSERT_EQ(actual.type(), expected.type()) << where;
  if (expected.isDouble()) {
    EXPECT_NEAR(actual.toDouble(), expected.toDouble(),
                1e-9 * std::max(1.0, std::abs(expected.toDouble())))
        << where;
  } else if (expected.isArray()) {
    ASSERT_EQ(actual.toArray().size(), expected.toArray().size()) << where;
    for (int index = 0; index < expected.toArray().size(); ++index) {
      ExpectSameJson(actual[index], expected[index], where + "/" + std::to_string(index));
    }
  } else if (expected.isObject()) {
    ASSERT_EQ(actual.toObject().keys(), expected.toObject().keys()) << where;
    for (const QString& key : expected.toObject().keys()) {
      ExpectSameJson(actual[key], expected[key], where + "/" + key.toStdString());
    }
  } else {
    EXPECT_EQ(actual, expected) << where;
  }
}

TEST_F(SurveyOutputsTest, ARecordedSessionGivesItsGoldenDocument) {
  const QJsonDocument golden =
      QJsonDocument::fromJson(QByteArray::fromStdString(Golden("survey-four-antennas.json")));
  ASSERT_TRUE(golden.isObject());
  ExpectSameJson(Survey({session}), golden.object(), "");
}

TEST_F(SurveyOutputsTest, TheDocumentNamesEveryMember) {
  Write("old.txt", Triangle(20));
  const QJsonObject survey = Survey({"-", "--compare", "old.txt"}, Triangle(0) + Triangle(30));
  EXPECT_EQ(Keys(survey), "antennas changes drift next pairs summary suspects");
  EXPECT_EQ(Keys(survey["summary"]),
            "antennas articulation bridges critical dof one_way pairs pairs_possible parts "
            "path_excess path_scatter reference reports settled sigma_pair sigma_reading thin");
  EXPECT_EQ(Keys(survey["antennas"][0]),
            "aa_sync aa_sync_high aa_sync_low metres metres_se pairs part phase readings "
            "report_metres rpn se status stood_at");
  EXPECT_EQ(Keys(survey["pairs"][0]),
            "a b bridge difference direction_t n_ab n_ba path_excess redundancy rejected residual "
            "smallest_detectable suspect thin w");
  EXPECT_EQ(Keys(survey["next"][0]), "gain stand_at");
  EXPECT_EQ(Keys(survey["changes"][0]), "changed metres rpn t");
  EXPECT_EQ(Keys(survey["drift"][0]), "phase rpn t");
}

TEST_F(SurveyOutputsTest, ATriangleIsMeasured) {
  const QJsonObject survey = Survey({"-"}, Triangle(0));
  const QJsonObject summary = survey["summary"].toObject();
  EXPECT_EQ(summary["reports"], 9);
  EXPECT_EQ(summary["antennas"], 3);
  EXPECT_EQ(summary["pairs"], 3);
  EXPECT_EQ(summary["dof"], 1);
  EXPECT_EQ(summary["settled"], 3);
  EXPECT_EQ(summary["reference"][0], 1);
  ASSERT_EQ(survey["antennas"].toArray().size(), 3);
  for (const QJsonValue& antenna : survey["antennas"].toArray()) {
    EXPECT_NEAR(antenna["metres"].toDouble(), (antenna["rpn"].toInt() - 1) * 261.0, 1e-6);
    EXPECT_EQ(antenna["report_metres"].toInt(), (antenna["rpn"].toInt() - 1) * 260);
    EXPECT_EQ(antenna["status"], "settled");
  }
}

TEST_F(SurveyOutputsTest, WhatDoesNotExistIsNull) {
  const QJsonObject survey = Survey({"-"}, OneNeighbourReport(1, 2, -11));
  EXPECT_TRUE(survey["summary"]["path_excess"].isNull());
  EXPECT_TRUE(survey["summary"]["path_scatter"].isNull());
  const QJsonObject pair = survey["pairs"][0].toObject();
  for (const char* member : {"w", "smallest_detectable", "path_excess", "direction_t"}) {
    EXPECT_TRUE(pair[member].isNull()) << member;
  }
  EXPECT_TRUE(pair["bridge"].toBool());
  EXPECT_TRUE(pair["thin"].toBool());
  EXPECT_EQ(pair["difference"], -11);
}

TEST_F(SurveyOutputsTest, AReportThatFaultsHasNoLengths) {
  Write("many.txt", FiftyTwoAntennas());
  const QJsonObject survey = Survey({"many.txt"});
  ASSERT_EQ(survey["antennas"].toArray().size(), 51);
  EXPECT_TRUE(survey["antennas"][0]["report_metres"].isNull());
  EXPECT_FALSE(Survey({session})["antennas"][0]["report_metres"].isNull());
}

TEST_F(SurveyOutputsTest, NoAntennaIsAResult) {
  Write("empty.txt", "");
  const ConsoleResult text = Run({"survey", "empty.txt"});
  EXPECT_EQ(text.exitCode, 0);
  EXPECT_EQ(text.errors, "kelvara-cli: no report of an antenna is in \"empty.txt\"\n");
  EXPECT_EQ(text.output, Golden("survey-empty.txt"));
  Write("empty.json", R"({"reports":0,"aas":[],"cells":[]})");
  const QJsonObject survey = Survey({"empty.json"});
  EXPECT_EQ(survey["summary"]["antennas"], 0);
  EXPECT_EQ(survey["antennas"].toArray().size(), 0);
}

TEST_F(SurveyOutputsTest, ResultsGiveTheSameSurveyAsTheirSession) {
  for (const std::string name : {"four-antennas", "fifty-one-antennas"}) {
    const std::string recorded = GoldenPath(name + ".session.txt");
    Output({"replay", recorded, "--json", "results.json"});
    QJsonObject expected = Survey({recorded});
    EXPECT_TRUE(expected.contains("drift"));
    expected.remove("drift");
    EXPECT_EQ(Survey({"results.json"}), expected);
    EXPECT_EQ(Survey({"-"}, Read("results.json")), expected);
  }
}

TEST_F(SurveyOutputsTest, SeveralFilesAreOneStream) {
  Write("a.txt", Triangle(0));
  Write("both.txt", Triangle(0) + Read(session));
  EXPECT_EQ(Output({"survey", "a.txt", session}), Output({"survey", "both.txt"}));
}

TEST_F(SurveyOutputsTest, AnAntennaThatChangedIsListed) {
  Write("old.txt", Triangle(0));
  const QJsonObject survey = Survey({"-", "--compare", "old.txt"}, Triangle(9));
  const QJsonArray changes = survey["changes"].toArray();
  ASSERT_EQ(changes.size(), 3);
  for (const QJsonValue& change : changes) {
    const bool changed = change["rpn"] == 3;
    EXPECT_EQ(change["changed"].toBool(), changed);
    EXPECT_NEAR(change["metres"].toDouble(), changed ? 261.0 : 0.0, 1e-6);
  }
  const std::string text = Output({"survey", "-", "--compare", "old.txt"}, Triangle(9));
  EXPECT_NE(text.find("Changed: 03 is 261 m longer"), std::string::npos) << text;
  EXPECT_NE(Output({"survey", "old.txt", "--compare", "old.txt"}).find("Changed: none of 3\n"),
            std::string::npos);
}

TEST_F(SurveyOutputsTest, DriftIsListed) {
  const QJsonObject survey = Survey({"-"}, Triangle(0) + Triangle(9));
  const QJsonArray drift = survey["drift"].toArray();
  ASSERT_EQ(drift.size(), 1);
  EXPECT_EQ(drift[0]["rpn"], 3);
  EXPECT_NEAR(drift[0]["phase"].toDouble(), 9.0, 1e-9);
}

TEST_F(SurveyOutputsTest, TheReportNamesItsFilesInUtf8) {
  Write("caf\xE9 & 1.txt", Triangle(9));
  Write("old.txt", Triangle(0));
  Output({"survey", "caf\xE9 & 1.txt", "old.txt", "--compare", "old.txt", "--html", "survey.html"});
  const std::string html = Read("survey.html");
  // The byte is a letter in some character sets and invalid in others.
  const std::string name = qt::ToQString("caf\xE9").toUtf8().toStdString();
  EXPECT_NE(html.find("From " + name + " &amp; 1.txt, old.txt. 18 reports"), std::string::npos);
  EXPECT_NE(html.find("Changes since old.txt"), std::string::npos);
  Output({"survey", "-", "--html", "survey.html"}, Triangle(0));
  EXPECT_NE(Read("survey.html").find("From standard input. 9 reports"), std::string::npos);
}

TEST_F(SurveyOutputsTest, AFileContainsTheSameDocumentAndTheTextIsPrinted) {
  EXPECT_EQ(Output({"survey", session, "--json", "survey.json"}), Output({"survey", session}));
  EXPECT_EQ(Read("survey.json"), Output({"survey", session, "--json", "-"}));
}

}  // namespace
}  // namespace kelvara::test
