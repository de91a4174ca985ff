#include <gtest/gtest.h>

#include <QFrame>
#include <QTest>

#include "FrmMainRig.h"
#include "app/MainStatusBar.h"

namespace kelvara::test {
namespace {

constexpr double kTwipsPerPixel = 15.0;

int Pixels(int twips) { return qRound(twips / kTwipsPerPixel); }

/// W and H of the layout rule, in twips.
struct Outer {
  explicit Outer(FrmMainRig& rig)
      : W(rig.Grid().parentWidget()->width() * 15 + 120),
        H(rig.Grid().parentWidget()->height() * 15 + 1080) {}

  int W;
  int H;
};

const std::initializer_list<QSize> kSizes = {{400, 300}, {401, 301}, {800, 600}, {1920, 1080}};

TEST(FrmMainLayout, WithoutTheLogFillsTheWindowWithTheGrid) {
  FrmMainRig rig;
  rig.Open();
  for (const QSize size : kSizes) {
    rig.window.resize(size);
    QCoreApplication::processEvents();
    const Outer outer(rig);
    EXPECT_EQ(rig.Grid().geometry(),
              QRect(0, Pixels(30), Pixels(outer.W - 120), Pixels(outer.H - 1110)));
    EXPECT_EQ(rig.Grid().geometry().bottom() + 1, Pixels(outer.H - 1080));
  }
}

TEST(FrmMainLayout, WithTheLogPutsItBelowTheGrid) {
  FrmMainRig rig;
  rig.store.SetValue("DisplayLog", "True");
  rig.Open();
  for (const QSize size : kSizes) {
    rig.window.resize(size);
    QCoreApplication::processEvents();
    const Outer outer(rig);
    const QRect grid = rig.Grid().geometry();
    const QRect log = rig.TextLog().geometry();
    EXPECT_EQ(grid.topLeft(), QPoint(0, Pixels(30)));
    EXPECT_EQ(grid.width(), Pixels(outer.W - 120));
    EXPECT_NEAR(grid.height(), (outer.H - 2810) / kTwipsPerPixel, 1.0);
    EXPECT_EQ(log.topLeft(), QPoint(0, Pixels(outer.H - 2730)));
    EXPECT_EQ(log.width(), Pixels(outer.W - 130));
    EXPECT_EQ(log.height(), Pixels(1650));
    EXPECT_LE(grid.bottom(), log.top());
  }
}

TEST(FrmMainLayout, GivesTheFreedSpaceBackToTheGrid) {
  FrmMainRig rig;
  rig.Open();
  const QRect without = rig.Grid().geometry();
  rig.Choose("mnuDisplayLogOn");
  EXPECT_LT(rig.Grid().geometry().height(), without.height());
  rig.Choose("mnuDisplayLogOff");
  EXPECT_EQ(rig.Grid().geometry(), without);
}

TEST(FrmMainLayout, StretchesTheLinesToTheWindowsWidth) {
  FrmMainRig rig;
  rig.Open();
  for (const char* const line : {"Line1", "Line2"}) {
    EXPECT_EQ(Find<QFrame>(rig.window, line).width(), Pixels(Outer(rig).W));
  }
}

TEST(FrmMainLayout, ShowsEveryStatusTextInFull) {
  FrmMainRig rig;
  rig.Open();
  for (const QSize size : kSizes) {
    rig.window.resize(size);
    QCoreApplication::processEvents();
    for (const char* const link :
         {"Beltpack Connected...", "Attempting To Connect To Beltpack..."}) {
      app::MainStatusBar& bar = Find<app::MainStatusBar>(rig.window, "StatusBar1");
      bar.SetPanel(app::StatusPanel::Link, link);
      bar.SetPanel(app::StatusPanel::Capture, "Logging Paused...");
      bar.SetPanel(app::StatusPanel::Reports, "Reports: 12345");
      bar.SetPanel(app::StatusPanel::Aas, "AAs: 51");
      bar.SetPanel(app::StatusPanel::Port, "COM12");
      bar.SetPanel(app::StatusPanel::Rate, "115200");
      QCoreApplication::processEvents();
      EXPECT_EQ(LayoutFaults(bar), "") << link << " at " << size.width();
    }
    TakePicture(rig.window, "status-" + std::to_string(size.width()));
  }
}

TEST(FrmMainLayout, LooksRightInBothThemesWithFewAndManyAntennas) {
  for (const Theme theme : {Theme::Light, Theme::Dark}) {
    const UseTheme useTheme(theme);
    const std::string name = theme == Theme::Light ? "light" : "dark";
    for (const int antennas : {3, 51}) {
      FrmMainRig rig;
      rig.store.SetValue("DisplayLog", "True");
      rig.store.SetValue("FPSDisplay", "True");
      rig.store.SetValue("RFPSUnits", "2");
      rig.Open();
      rig.window.resize(1000, 700);
      for (int from = 0; from < antennas; ++from) {
        std::string report;
        char line[64];
        std::snprintf(line, sizeof line, "\n100ec5A%X%02X Sync\n", from % 16, from);
        report += line;
        for (int n = 1; n <= 9 && antennas > 1; ++n) {
          const int to = (from + n) % antennas;
          std::snprintf(line, sizeof line, "100ec5A%X%02X Neighbour phase =  %3d\n", to % 16, to,
                        (from - to) * 3 % 99);
          report += line;
        }
        rig.window.ProcessRfpsReport(report);
      }
      rig.window.UpdateSyncGrid();
      EXPECT_EQ(rig.Panel(4), "AAs: " + std::to_string(antennas));
      EXPECT_EQ(rig.beeper.count, 0);
      EXPECT_EQ(LayoutFaults(Find<QWidget>(rig.window, "StatusBar1")), "");
      TakePicture(rig.window, name + "-" + std::to_string(antennas));
    }
  }
}

}  // namespace
}  // namespace kelvara::test
