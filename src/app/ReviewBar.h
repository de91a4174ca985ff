#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QWidget>
#include <array>

namespace kelvara::app {

/// The controls of a review: the slider `ReviewSlider` over the reports of the session, the buttons
/// `CmdReviewBack` and `CmdReviewForward`, the number of the report and its time, `ReviewTime`.
/// While the session is being read, a progress bar and `CmdReviewCancel` are in their place.
class ReviewBar : public QWidget {
  Q_OBJECT

 public:
  explicit ReviewBar(QWidget* parent = nullptr);

  void ShowProgress(int percent) { ReviewProgress_->setValue(percent); }

  /// Ends the progress: the slider has the reports 0 to `reports`, and the focus.
  void ShowSlider(int reports);

  /// Shows a report as the one that the slider is at, and its time.
  void ShowReport(int report, const QString& time);

  /// Stops repeating for a mouse button that is held down. The focus stays where it is.
  void StopRepeating();

 signals:
  /// The user has moved to a report.
  void Moved(int report);
  void Cancelled();

 private:
  QPushButton* AddStep(const char* name, const char* caption, const char* accessibleName,
                       const char* toolTip, Qt::Key key, QAbstractSlider::SliderAction action);

  std::array<QWidget*, 5> ReviewControls() const;

  QProgressBar* ReviewProgress_;
  QPushButton* CmdReviewCancel_;
  QPushButton* CmdReviewBack_;
  QSlider* ReviewSlider_;
  QPushButton* CmdReviewForward_;
  QLabel* Label1_;
  QLabel* ReviewTime_;
};

}  // namespace kelvara::app
