#include <gtest/gtest.h>

#include "survey/FrmSurveyRig.h"

namespace kelvara::test {
namespace {

/// A crowded survey: 51 antennas, a fifth of the pairs, suspects, one-way pairs and a bridge.
SyntheticSite CrowdedSite() {
  SyntheticSite site = SyntheticSite::Random(51, 9);
  site.SetNoise(0.4);
  for (int a = 0; a < 50; ++a) {
    for (int b = a + 1; b < 50; ++b) {
      const int kind = (a * 7 + b * 13) % 15;
      if (kind < 3) {
        site.HearBoth(a, b, 1 + kind * 3);
      } else if (kind == 4) {
        site.Hear(a, b, 2);
      }
    }
  }
  for (const int a : {3, 17, 30}) {
    site.Hear(a, a + 8, 6, 14.0);
    site.Hear(a + 8, a, 6, -14.0);
  }
  site.HearBoth(49, 50, 5);
  return site;
}

TEST(FrmSurveyLayout, HoldsInEveryThemeFontAndSize) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      FrmSurveyRig rig;
      rig.Fill(CrowdedSite());
      survey::FrmSurvey& window = rig.OpenSurvey();
      for (const QSize size : {QSize(1180, 680), QSize(640, 350), QSize(1366, 740)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        const std::string shape =
            std::to_string(size.width()) + "x" + std::to_string(size.height());
        EXPECT_EQ(LayoutFaults(window), "") << note << ", font " << scale << ", " << shape;
        TakePicture(window, QString("%1-font%2-").arg(note).arg(scale).toStdString() + shape);
      }
    }
  }
}

TEST(FrmSurveyLayout, AllColumnsOfTheAntennasFitIntoTheWindowOnASmallScreen) {
  FrmSurveyRig rig;
  rig.Fill(CrowdedSite());
  rig.OpenSurvey().resize(1366 * 9 / 10, 680);
  QCoreApplication::processEvents();
  const QTableView& table = rig.Table();
  const QRect last = table.visualRect(table.model()->index(0, 8));
  EXPECT_LE(last.right(), table.viewport()->width());
  EXPECT_GE(last.width(), table.fontMetrics().horizontalAdvance("near a step, report differs"));
}

TEST(FrmSurveyLayout, ALowWindowShowsPagesAndAHighOneEverything) {
  FrmSurveyRig rig;
  rig.Fill(CrowdedSite());
  survey::FrmSurvey& window = rig.OpenSurvey();
  window.resize(640, 10);
  QCoreApplication::processEvents();
  EXPECT_TRUE(rig.Table().isVisible());
  EXPECT_FALSE(rig.Network().isVisible());
  Press(window, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(rig.Network().isVisible());
  Press(window, Qt::Key_P, Qt::AltModifier);
  EXPECT_TRUE(rig.Pairs().isVisible());
  TakePicture(window, "pairs-page");
  Press(window, Qt::Key_N, Qt::AltModifier);
  TakePicture(window, "network-page");
  window.resize(900, 2000);
  QCoreApplication::processEvents();
  for (const QWidget* const control :
       {static_cast<QWidget*>(&rig.Table()), &rig.Network(), static_cast<QWidget*>(&rig.Pairs())}) {
    EXPECT_TRUE(control->isVisible()) << control->objectName().toStdString();
  }
  EXPECT_EQ(LayoutFaults(window), "");
  EXPECT_GT(rig.Network().width(), 250);
}

}  // namespace
}  // namespace kelvara::test
