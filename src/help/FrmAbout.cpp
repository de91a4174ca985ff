#include "help/FrmAbout.h"

#include <QApplication>
#include <QFontInfo>
#include <QGridLayout>
#include <string>

#include "help/MakerTexts.h"
#include "help/ProgramIcon.h"
#include "help/ProgramTitle.h"
#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"
#include "platform/widgets/DialogManners.h"

namespace kelvara::help {
namespace {

constexpr QSize kIconSize(64, 64);
constexpr double kTitleScale = 1.4;

/// The maker's name and address, one line each.
std::string MakerLines() {
  std::string lines(kMakerName);
  for (const std::string_view line : kMakerAddress) {
    lines += "\r\n";
    lines += line;
  }
  return lines;
}

}  // namespace

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("FrmAbout"));
  setWindowTitle(QStringLiteral("About ") + QString::fromLatin1(kProgramTitle));
  setModal(true);

  QLabel* const picIcon = widgets::NewLabel(*this, "picIcon", "");
  // Drawn for the screen with the highest resolution, so that it is sharp on every screen.
  picIcon->setPixmap(ProgramIcon().pixmap(kIconSize, qApp->devicePixelRatio()));
  picIcon->setAccessibleName(QStringLiteral("Program icon"));

  QLabel* const lblTitle = widgets::NewLabel(*this, "lblTitle", "");
  lblTitle->setText(qt::ToQString(ProgramTitleAndVersion()));
  QFont titleFont = lblTitle->font();
  titleFont.setPointSizeF(QFontInfo(titleFont).pointSizeF() * kTitleScale);
  titleFont.setBold(true);
  lblTitle->setFont(titleFont);

  QLabel* const lblCopy = widgets::NewLabel(*this, "LblCopy", "");
  lblCopy->setText(qt::ToQString(MakerLines()));

  QPushButton* const cmdOK = widgets::NewButton(*this, "cmdOK", "&OK", "");
  widgets::MakeDefault(*cmdOK);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::close);

  auto* const layout = new QGridLayout(this);
  layout->addWidget(picIcon, 0, 0, 2, 1, Qt::AlignTop);
  layout->addWidget(lblTitle, 0, 1);
  layout->addWidget(lblCopy, 1, 1);
  layout->addWidget(cmdOK, 2, 0, 1, 2, Qt::AlignRight);
  layout->setHorizontalSpacing(2 * layout->horizontalSpacing());
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace kelvara::help
