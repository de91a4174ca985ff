#include <gtest/gtest.h>

#include <QCoreApplication>

#include "report/FrmReport.h"
#include "report/FrmReportRig.h"

namespace kelvara::report {
namespace {

using namespace test;

class FrmReportLayoutTest : public ::testing::Test, public FrmReportRig {
 protected:
  void FillIn() {
    WriteTextFile(Path("rfields.ds"),
                  "City Theatre, main hall\r\nA. Tester\r\n 1 \r\n"
                  "Antenna 3 moved to the gallery.\r\nCable 7 replaced.\r\n");
    store.SetValue("LastReportFile", "C:\\Sites\\City Theatre\\main hall.html");
  }
};

TEST_F(FrmReportLayoutTest, HoldsInEveryThemeAndFont) {
  FillIn();
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      Open();
      EXPECT_EQ(LayoutFaults(*window), "") << note << ", font " << scale;
      if (scale != 1.5) {
        TakePicture(*window, scale == 1.0 ? note : std::string(note) + "-large-font");
      }
    }
  }
}

TEST_F(FrmReportLayoutTest, FollowsAFontThatChangesWhileItIsOpen) {
  FillIn();
  Open();
  const UseFont useFont(2.0);
  QCoreApplication::processEvents();
  window->adjustSize();
  EXPECT_EQ(LayoutFaults(*window), "");
  EXPECT_GE(TxtNotes().height(), 6 * TxtNotes().fontMetrics().lineSpacing());
}

TEST_F(FrmReportLayoutTest, NotesTakeTheSpaceOfALargerWindow) {
  Open();
  const int before = TxtNotes().height();
  window->resize(window->width() + 100, window->height() + 100);
  QCoreApplication::processEvents();
  EXPECT_EQ(TxtNotes().height(), before + 100);
  EXPECT_EQ(LayoutFaults(*window), "");
  window->resize(1, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(LayoutFaults(*window), "");
}

}  // namespace
}  // namespace kelvara::report
