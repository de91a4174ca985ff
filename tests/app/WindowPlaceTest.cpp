#include "app/WindowPlace.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <QTest>
#include <functional>
#include <string>

#include "FrmMainRig.h"
#include "platform/MemorySettingsStore.h"

namespace kelvara::test {
namespace {

/// A screen of 1366 x 768 at a scale, with a taskbar of 40 pixels.
QRect SmallScreen(double scale) { return {0, 0, int(1366 / scale), int((768 - 40) / scale)}; }

TEST(PlaceOnScreen, KeepsAPlaceThatFits) {
  const QRect place(100, 50, 900, 620);
  EXPECT_EQ(app::PlaceOnScreen(place, {SmallScreen(1)}), place);
}

TEST(PlaceOnScreen, IsNeverLargerThanTheScreen) {
  for (const double scale : {1.25, 1.5, 2.0}) {
    const QRect screen = SmallScreen(scale);
    const auto place = app::PlaceOnScreen(QRect(30, 20, 1400, 1200), {screen});
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(*place, screen) << scale;
  }
  EXPECT_EQ(app::PlaceOnScreen(QRect(30, 20, 900, 620), {SmallScreen(1.5)}),
            QRect(10, 0, 900, 485));
}

TEST(PlaceOnScreen, IsOnTheScreenThatShowsItsTitleBar) {
  const QRect left(-1000, 0, 1000, 700);
  const QRect right(0, 0, 1000, 700);
  EXPECT_EQ(app::PlaceOnScreen(QRect(-900, 100, 500, 400), {right, left}),
            QRect(-900, 100, 500, 400));
  EXPECT_EQ(app::PlaceOnScreen(QRect(1200, 100, 500, 400), {right, left}), std::nullopt);
  EXPECT_EQ(app::PlaceOnScreen(QRect(100, -300, 500, 400), {right, left}), std::nullopt)
      << "its title bar is above the screen";
}

/// The main window on the screen of the test, as the program opens it.
class WindowPlaceLayout : public testing::Test {
 protected:
  /// Opens a window, lets the user change it, and closes it. Returns its geometry when opened.
  QRect Run(const std::function<void(QWidget&)>& change = {}) {
    FrmMainRig rig;
    app::WindowPlace place(rig.window, store_);
    place.Restore();
    ShowWindow(rig.window);
    place.NoteOpened();
    const QRect opened = rig.window.geometry();
    maximised_ = rig.window.isMaximized();
    if (change) {
      change(rig.window);
      QCoreApplication::processEvents();
    }
    place.Save();
    return opened;
  }

  /// Whether the screen is larger than the smallest window; at twice the scale it is not.
  bool HasRoom() const { return screen_.width() > 500 && screen_.height() > 500; }

  std::string Stored() const { return store_.Read("Place", ""); }

  platform::MemorySettingsStore store_;
  QRect screen_ = QGuiApplication::primaryScreen()->availableGeometry();
  bool maximised_ = false;
};

TEST_F(WindowPlaceLayout, OpensNoLargerThanTheScreen) {
  const QRect opened = Run();
  EXPECT_LE(opened.width(), screen_.width());
  EXPECT_LE(opened.height(), screen_.height());
  EXPECT_EQ(Stored(), "") << "the user has not changed it";
}

TEST_F(WindowPlaceLayout, ReopensWhereTheUserLeftIt) {
  if (!HasRoom()) {
    GTEST_SKIP() << "the screen is too small to move a window in";
  }
  const QRect chosen(60, 80, 400, 320);
  Run([&chosen](QWidget& window) { window.setGeometry(chosen); });
  EXPECT_EQ(Stored(), "60 80 400 320");
  EXPECT_EQ(Run(), chosen);
  EXPECT_EQ(Stored(), "60 80 400 320");
}

TEST_F(WindowPlaceLayout, ReopensMaximisedWithItsSizeForLater) {
  if (!HasRoom()) {
    GTEST_SKIP() << "the screen is too small to move a window in";
  }
  store_.Write("Place", "60 80 400 320");
  Run([](QWidget& window) { window.showMaximized(); });
  EXPECT_EQ(Stored(), "60 80 400 320 maximised");
  Run([](QWidget& window) { window.showNormal(); });
  EXPECT_TRUE(maximised_);
  EXPECT_EQ(Stored(), "60 80 400 320");
}

TEST_F(WindowPlaceLayout, APlaceThatNoScreenShowsKeepsItsSize) {
  if (!HasRoom()) {
    GTEST_SKIP() << "the screen is too small to move a window in";
  }
  for (const char* const place : {"90000 90000 400 320", "-5 -99999 400 320"}) {
    store_.Write("Place", place);
    const QRect opened = Run();
    EXPECT_EQ(opened.size(), QSize(400, 320)) << place;
    EXPECT_TRUE(screen_.contains(opened)) << place;
  }
  store_.Write("Place", "90000 90000 400 320 maximised");
  Run();
  EXPECT_TRUE(maximised_);
}

TEST_F(WindowPlaceLayout, APlaceThatIsBrokenIsNotUsed) {
  const QRect usual = Run();
  for (const char* const place : {"25 31 400", "x"}) {
    store_.Write("Place", place);
    EXPECT_EQ(Run(), usual) << place;
  }
}

TEST_F(WindowPlaceLayout, APlaceOfASizeThatIsTooSmallGetsTheSmallestSize) {
  store_.Write("Place", "10 10 -5 3");
  EXPECT_EQ(Run().size(), QSize(400, 300));
}

TEST(StartUpMessage, LeavesTheFocusToTheMainWindow) {
  FrmMainRig rig;
  rig.port.openable = false;
  rig.window.show();
  BoxAnswer box(QMessageBox::Ok);
  const WhenShown dialog("FrmComSelect", [](QWidget& shown) { Press(shown, Qt::Key_Escape); });
  rig.window.Form_Load();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&rig.window));
}

}  // namespace
}  // namespace kelvara::test
