#include "link/FrmComSelect.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPointer>
#include <exception>
#include <utility>

#include "base/Fault.h"
#include "help/ProgramTitle.h"
#include "link/PortMarkDelegate.h"
#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"
#include "platform/widgets/DialogManners.h"

namespace kelvara::link {
namespace {

constexpr const char* kRates[] = {"4800", "9600", "19200", "28800", "38400", "57600"};
/// The space kept for the description of the chosen port, so that the window keeps its size.
constexpr int kPortLineLines = 3;
constexpr int kPortLineCharacters = 56;
constexpr int kPortLineRow = 2;

/// A list that may have nothing chosen: getting the focus does not make its first entry current.
class PortList : public QListWidget {
 public:
  using QListWidget::QListWidget;

 protected:
  void focusInEvent(QFocusEvent* event) override {
    const bool nothingWasCurrent = !currentIndex().isValid();
    QListWidget::focusInEvent(event);
    if (nothingWasCurrent) {
      setCurrentItem(nullptr);
    }
  }
};

}  // namespace

FrmComSelect::FrmComSelect(ComPort& comPort, platform::MessageBoxes& messageBoxes,
                           PortDescription describePort, QWidget* parent)
    : QDialog(parent),
      comPort_(comPort),
      messageBoxes_(messageBoxes),
      describePort_(std::move(describePort)) {
  setObjectName(QStringLiteral("FrmComSelect"));
  setWindowTitle(QStringLiteral("Select Serial Port"));
  setModal(true);
  MakeControls();
  LayOut();
  Form_Load();
  connect(ComboCom_, &QListWidget::itemSelectionChanged, this, &FrmComSelect::ShowDescription);
}

void FrmComSelect::MakeControls() {
  ComboCom_ = new PortList(this);
  widgets::NameControl(*ComboCom_, "ComboCom", "COM Port",
                       "COM Port that Beltpack will be connected to.");
  for (int port = 1; port <= platform::kLastComPort; ++port) {
    ComboCom_->addItem(QStringLiteral("COM%1").arg(port));
  }
  ComboCom_->setItemDelegate(new PortMarkDelegate(ComboCom_));
  ComboBaud_ = new QComboBox(this);
  widgets::NameControl(*ComboBaud_, "ComboBaud", "Baud Rate",
                       "Baud rate (default is 19200 for beltpack).");
  ComboBaud_->setEditable(true);
  ComboBaud_->setInsertPolicy(QComboBox::NoInsert);
  ComboBaud_->setCompleter(nullptr);
  for (const char* const rate : kRates) {
    ComboBaud_->addItem(QString::fromLatin1(rate));
  }
  portLine_ = widgets::NewLabel(*this, "Label3", "");
  portLine_->setWordWrap(true);
  CmdOK_ = widgets::NewButton(*this, "CmdOK", "&OK", "Accept settings.");
  CmdCancel_ = widgets::NewButton(*this, "CmdCancel", "&Cancel",
                                  "Close the window without changing settings.");
  widgets::MakeDefault(*CmdOK_);
  connect(CmdOK_, &QPushButton::clicked, this, &FrmComSelect::CmdOK_Click);
  connect(CmdCancel_, &QPushButton::clicked, this, &FrmComSelect::CmdCancel_Click);
}

void FrmComSelect::LayOut() {
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(CmdOK_);
  buttons->addWidget(CmdCancel_);
  grid_ = new QGridLayout(this);
  grid_->addWidget(widgets::NewLabel(*this, "Label1", "COM Port:"), 0, 0);
  grid_->addWidget(ComboCom_, 1, 0);
  grid_->addWidget(widgets::NewLabel(*this, "Label2", "Baud Rate:"), 0, 1);
  grid_->addWidget(ComboBaud_, 1, 1, Qt::AlignTop);
  grid_->addWidget(portLine_, kPortLineRow, 0, 1, 2, Qt::AlignTop);
  grid_->addLayout(buttons, kPortLineRow + 1, 0, 1, 2);
  grid_->setRowStretch(1, 1);
  grid_->setColumnStretch(0, 1);
  grid_->setColumnStretch(1, 1);
  FitToFont();
}

void FrmComSelect::FitToFont() {
  // All ports are visible at once.
  ComboCom_->setMinimumHeight(ComboCom_->sizeHintForRow(0) * platform::kLastComPort +
                              2 * ComboCom_->frameWidth());
  const int columnWidth = widgets::WidthOf(*portLine_, kPortLineCharacters / 2);
  grid_->setColumnMinimumWidth(0, columnWidth);
  grid_->setColumnMinimumWidth(1, columnWidth);
  grid_->setRowMinimumHeight(kPortLineRow, widgets::HeightOf(*portLine_, kPortLineLines));
}

void FrmComSelect::Form_Load() {
  // A stored value that is not a valid port or rate leaves its box with nothing chosen.
  ComboCom_->setCurrentRow(-1);
  ComboBaud_->setCurrentIndex(-1);
  try {
    const int port = comPort_.GetComPort();
    if (port >= 1 && port <= platform::kLastComPort) {
      ComboCom_->setCurrentRow(port - 1);
    }
  } catch (const std::exception&) {
    ComboCom_->setCurrentRow(-1);
  }
  try {
    const QString rate = QString::number(comPort_.GetBaudRate());
    ComboBaud_->setCurrentIndex(ComboBaud_->findText(rate));
    ComboBaud_->setEditText(rate);
  } catch (const std::exception&) {
    ComboBaud_->setCurrentIndex(-1);
  }
  ShowDescription();
}

void FrmComSelect::CmdOK_Click() {
  // The program may end, and destroy the window, while the message is open.
  const QPointer<FrmComSelect> self(this);
  const int port = ChosenPort();
  try {
    if (port < 1) {
      comPort_.Close();
      throw base::Fault(base::FaultKind::Port, "No port is chosen");
    }
    comPort_.SelectPort(port - 1, qt::ToText(ComboBaud_->currentText()));
    accept();
  } catch (const std::exception&) {
    messageBoxes_.Show(CouldNotOpenText(port), help::kProgramTitle, platform::MessageIcon::Critical,
                       platform::MessageButtons::OkCancel);
    if (self) {
      ShowDescription();
    }
  }
}

void FrmComSelect::CmdCancel_Click() { reject(); }

void FrmComSelect::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    FitToFont();
  }
  if (event->type() == QEvent::ActivationChange) {
    // The user may have plugged something in meanwhile.
    if (isActiveWindow() && wasLeft_) {
      ShowDescription();
      ShowMarks();
    }
    wasLeft_ = !isActiveWindow();
  }
}

int FrmComSelect::ChosenPort() const {
  const QList<QListWidgetItem*> chosen = ComboCom_->selectedItems();
  return chosen.isEmpty() ? 0 : ComboCom_->row(chosen.constFirst()) + 1;
}

void FrmComSelect::ShowDescription() {
  const QString text = qt::ToQString(Description(ChosenPort()));
  portLine_->setText(text);
  portLine_->setAccessibleName(text);
  KeepSpaceForDescription();
}

void FrmComSelect::SetPortMarks(PortMark portMark) {
  portMark_ = std::move(portMark);
  ShowMarks();
}

void FrmComSelect::ShowMarks() {
  for (int row = 0; portMark_ && row < ComboCom_->count(); ++row) {
    QListWidgetItem& item = *ComboCom_->item(row);
    const QString mark = qt::ToQString(portMark_(row + 1));
    item.setData(kPortMarkRole, mark);
    item.setData(Qt::AccessibleTextRole,
                 mark.isEmpty() ? item.text() : item.text() + QStringLiteral(", present: ") + mark);
  }
}

void FrmComSelect::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  KeepSpaceForDescription();
}

void FrmComSelect::KeepSpaceForDescription() {
  // A narrower window wraps the description onto more lines.
  grid_->activate();
  setMinimumHeight(grid_->hasHeightForWidth() ? grid_->totalMinimumHeightForWidth(width())
                                              : grid_->totalMinimumSize().height());
}

std::string FrmComSelect::Description(int port) const {
  if (port < 1) {
    return "No port is chosen.";
  }
  try {
    return describePort_ ? describePort_(port) : std::string();
  } catch (const std::exception& failure) {
    return failure.what();
  }
}

}  // namespace kelvara::link
