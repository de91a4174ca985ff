#include "app/ReviewBar.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <algorithm>

#include "platform/widgets/DialogControls.h"

namespace kelvara::app {
namespace {

/// A page of the slider is this part of the session.
constexpr int kPages = 20;
constexpr int kShortestSlider = 60;

}  // namespace

ReviewBar::ReviewBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("ReviewBar"));
  ReviewProgress_ = new QProgressBar(this);
  widgets::NameControl(*ReviewProgress_, "ReviewProgress", "Opening the session",
                       "How much of the session has been read.");
  ReviewProgress_->setFormat(QStringLiteral("Opening: %p %"));
  CmdReviewCancel_ = widgets::NewButton(*this, "CmdReviewCancel", "Cancel",
                                        "Stop reading the session and close the window.");
  connect(CmdReviewCancel_, &QPushButton::clicked, this, &ReviewBar::Cancelled);
  ReviewSlider_ = new QSlider(Qt::Horizontal, this);
  widgets::NameControl(*ReviewSlider_, "ReviewSlider", "Reports",
                       "The report up to which the session is shown: the arrow keys move by one "
                       "report, Page Up and Page Down by a twentieth of the session.");
  ReviewSlider_->setMinimumWidth(kShortestSlider);
  connect(ReviewSlider_, &QSlider::valueChanged, this, &ReviewBar::Moved);
  CmdReviewBack_ = AddStep("CmdReviewBack", "<", "One report back", "One report back (Alt+Left).",
                           Qt::Key_Left, QAbstractSlider::SliderSingleStepSub);
  CmdReviewForward_ =
      AddStep("CmdReviewForward", ">", "One report forward", "One report forward (Alt+Right).",
              Qt::Key_Right, QAbstractSlider::SliderSingleStepAdd);
  Label1_ = widgets::NewLabel(*this, "Label1", "");
  Label1_->setToolTip(QStringLiteral("The report shown, and how many the session has."));
  ReviewTime_ = widgets::NewLabel(*this, "ReviewTime", "");
  ReviewTime_->setToolTip(QStringLiteral("When the report was requested."));

  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(4, 2, 4, 2);
  line->addWidget(ReviewProgress_, 1);
  line->addWidget(CmdReviewCancel_);
  line->addWidget(CmdReviewBack_);
  line->addWidget(ReviewSlider_, 1);
  line->addWidget(CmdReviewForward_);
  line->addWidget(Label1_);
  line->addWidget(ReviewTime_);
  for (QWidget* const control : ReviewControls()) {
    control->hide();
  }
  CmdReviewCancel_->setFocus();
}

QPushButton* ReviewBar::AddStep(const char* name, const char* caption, const char* accessibleName,
                                const char* toolTip, Qt::Key key,
                                QAbstractSlider::SliderAction action) {
  QPushButton* const button = widgets::NewButton(*this, name, caption, toolTip);
  button->setAccessibleName(QString::fromLatin1(accessibleName));
  button->setAutoRepeat(true);
  button->setFixedWidth(button->sizeHint().height() + widgets::WidthOf(*button, 1));
  // Alt and an arrow key step wherever the focus is.
  auto* const shortcut = new QShortcut(QKeySequence(Qt::ALT | key), this);
  shortcut->setEnabled(false);
  const auto step = [this, action] { ReviewSlider_->triggerAction(action); };
  connect(button, &QPushButton::clicked, this, step);
  connect(shortcut, &QShortcut::activated, this, step);
  return button;
}

void ReviewBar::ShowSlider(int reports) {
  {
    const QSignalBlocker quiet(ReviewSlider_);
    ReviewSlider_->setRange(0, reports);
    ReviewSlider_->setPageStep(std::max(1, reports / kPages));
  }
  for (QWidget* const control : ReviewControls()) {
    control->show();
  }
  for (QShortcut* const shortcut : findChildren<QShortcut*>()) {
    shortcut->setEnabled(true);
  }
  // Before the button that has the focus is hidden, which would pass it to the grid.
  ReviewSlider_->setFocus();
  ReviewProgress_->hide();
  CmdReviewCancel_->hide();
}

std::array<QWidget*, 5> ReviewBar::ReviewControls() const {
  return {CmdReviewBack_, ReviewSlider_, CmdReviewForward_, Label1_, ReviewTime_};
}

void ReviewBar::ShowReport(int report, const QString& time) {
  {
    const QSignalBlocker quiet(ReviewSlider_);
    ReviewSlider_->setValue(report);
  }
  Label1_->setText(QStringLiteral("%1 of %2").arg(report).arg(ReviewSlider_->maximum()));
  ReviewTime_->setText(time);
  // The slider must not move under the mouse when a text becomes shorter.
  for (QLabel* const label : {Label1_, ReviewTime_}) {
    label->setMinimumWidth(std::max(label->minimumWidth(), label->sizeHint().width()));
  }
}

void ReviewBar::StopRepeating() {
  QWidget* const focus = window()->focusWidget();
  setEnabled(false);
  setEnabled(true);
  if (focus != nullptr && isAncestorOf(focus)) {
    focus->setFocus();
  }
}

}  // namespace kelvara::app
