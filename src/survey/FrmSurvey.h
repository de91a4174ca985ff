#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>
#include <optional>
#include <vector>

#include "app/Session.h"
#include "platform/Desktop.h"
#include "survey/SurveyChanges.h"
#include "survey/SurveyCommands.h"
#include "survey/SurveyNetworkView.h"
#include "survey/SurveyResult.h"
#include "survey/SurveyTableView.h"

namespace kelvara::survey {

/// The survey window, which is modeless: the antennas, the network, the pairs of the chosen
/// antenna, and where to stand next. While it is visible it follows the results.
class FrmSurvey : public QDialog {
  Q_OBJECT

 public:
  /// `results` and `desktop` must outlive the window.
  FrmSurvey(app::Session& results, const platform::Desktop& desktop, QWidget* parent = nullptr);

  /// Shows the window with a survey of the results. One that is open comes to the front.
  void Open();  // NOLINT(bugprone-virtual-near-miss): not modal

  /// Called after the results have changed. However often it is called while one event is handled,
  /// one survey follows; none while the window is hidden.
  void ResultsChanged();

  /// Called after the display options have changed.
  void OptionsChanged();

  /// The survey shown.
  const SurveyResult& Survey() const { return survey_; }

  /// How many surveys the window has made.
  int SurveyCount() const { return surveyCount_; }

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeControls();
  void LayOut();
  void FitToFont();
  /// Gives the parts their shares of the window.
  void DivideSpace();
  /// In a low window, such as one on a small screen with large text, the antennas, the network and
  /// the pairs are pages of which one is shown.
  void SetPaged(bool paged);

  /// Surveys the results if they have changed, and shows the survey.
  void Follow();
  void MakeSurvey();
  void ShowSurvey();
  void ShowPairs();
  void ShowReferences();

  void ComboReference_Change();
  void TxtReferenceLength_Change();
  void CmdSaveSurvey_Click();
  void CmdCompare_Click();
  std::vector<DelayChange> Changes() const;

  /// What the list of references holds for none; RPNs are not negative.
  static constexpr int kShortest = -1;

  app::Session& results_;
  const platform::Desktop& desktop_;
  SurveyCommands commands_;
  SurveyResult survey_;
  std::optional<EarlierSurvey> earlier_;
  std::optional<int> reference_;  ///< The RPN of the antenna whose length is known.
  double referenceMetres_ = 0.0;
  bool stale_ = true;
  int surveyCount_ = 0;

  QTimer* SurveyTimer_ = nullptr;
  QLabel* Label1_ = nullptr;
  QLabel* Label2_ = nullptr;
  QLabel* Label3_ = nullptr;
  QLabel* Label4_ = nullptr;
  QLabel* Label5_ = nullptr;
  QLabel* Label6_ = nullptr;
  QLabel* Label7_ = nullptr;
  QLabel* Label8_ = nullptr;
  QComboBox* ComboReference_ = nullptr;
  QLineEdit* TxtReferenceLength_ = nullptr;
  QAction* wrongLength_ = nullptr;
  SurveyTableView* SurveyTable_ = nullptr;
  SurveyNetworkView* SurveyNetwork_ = nullptr;
  SurveyTableView* SurveyPairs_ = nullptr;
  QLabel* SurveyNext_ = nullptr;
  QSplitter* sides_ = nullptr;
  QSplitter* right_ = nullptr;
  QTabWidget* SurveyPages_ = nullptr;
  QWidget* tablePart_ = nullptr;
  QWidget* networkPart_ = nullptr;
  QWidget* pairsPart_ = nullptr;
  bool paged_ = false;
  QPushButton* CmdSaveSurvey_ = nullptr;
  QPushButton* CmdCompare_ = nullptr;
  QPushButton* CmdClose_ = nullptr;
};

}  // namespace kelvara::survey
