#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <string>

#include "app/FrmMainRig.h"
#include "support/SyntheticSite.h"
#include "survey/FrmSurvey.h"

namespace kelvara::test {

/// The main window with a survey window that the user opens from it.
class FrmSurveyRig : public FrmMainRig {
 public:
  FrmSurveyRig() { ShowWindow(window); }

  sync::SyncModel& Model() { return window.Live().Results().Model(); }
  void Fill(SyntheticSite site) { Model() = site.Model(); }

  /// Presses the button's access key and waits for the window.
  survey::FrmSurvey& OpenSurvey() {
    ShowWindow(window);
    Press(window, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] {
      return window.findChild<survey::FrmSurvey*>() != nullptr && Survey().isVisible();
    }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Survey()));
    return Survey();
  }

  survey::FrmSurvey& Survey() { return Find<survey::FrmSurvey>(window, "FrmSurvey"); }
  survey::SurveyTableView& Table() {
    return Find<survey::SurveyTableView>(Survey(), "SurveyTable");
  }
  survey::SurveyTableView& Pairs() {
    return Find<survey::SurveyTableView>(Survey(), "SurveyPairs");
  }
  QWidget& Network() { return Find<QWidget>(Survey(), "SurveyNetwork"); }
  QComboBox& Reference() { return Find<QComboBox>(Survey(), "ComboReference"); }
  QLineEdit& Length() { return Find<QLineEdit>(Survey(), "TxtReferenceLength"); }
  std::string Text(const char* label) { return Find<QLabel>(Survey(), label).text().toStdString(); }

  /// The texts of a table's column, from the first row to the last.
  static std::string Column(const QTableView& table, int column) {
    std::string text;
    for (int row = 0; row < table.model()->rowCount(); ++row) {
      text +=
          (row == 0 ? "" : " ") + table.model()->index(row, column).data().toString().toStdString();
    }
    return text;
  }

  /// Chooses a reference with the keyboard.
  void ChooseReference(int index) {
    Reference().setFocus();
    Press(Survey(), Qt::Key_Home);
    for (int step = 0; step < index; ++step) {
      Press(Survey(), Qt::Key_Down);
    }
    QCoreApplication::processEvents();
  }
};

/// A site in which every antenna hears every other, with a wrong pair if `wrong`.
inline SyntheticSite DenseSite(int antennas, bool wrong = false) {
  SyntheticSite site = SyntheticSite::Random(antennas, 5);
  site.SetNoise(0.3);
  for (int a = 0; a < antennas; ++a) {
    for (int b = a + 1; b < antennas; ++b) {
      const bool isWrong = wrong && a == 1 && b == 3;
      site.Hear(a, b, 4, isWrong ? 12.0 : 0.0);
      site.Hear(b, a, 4, isWrong ? -12.0 : 0.0);
    }
  }
  return site;
}

}  // namespace kelvara::test
