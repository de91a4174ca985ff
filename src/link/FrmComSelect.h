#pragma once

#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <functional>
#include <string>

#include "link/ComPort.h"
#include "platform/MessageBoxes.h"

namespace kelvara::link {

/// Describes the device behind a port number and whether it can be opened; if not, why and what to
/// do.
using PortDescription = std::function<std::string(int port)>;

/// Names the adapter of the device behind a port number; empty if no device is present.
using PortMark = std::function<std::string(int port)>;

/// The port dialog: which serial port the beltpack is on, and at what rate. A new one is made each
/// time it is shown.
class FrmComSelect : public QDialog {
  Q_OBJECT

 public:
  /// `comPort` and `messageBoxes` must outlive the window.
  FrmComSelect(ComPort& comPort, platform::MessageBoxes& messageBoxes, PortDescription describePort,
               QWidget* parent = nullptr);

  /// Marks the ports whose devices are present, now and whenever the user comes back.
  void SetPortMarks(PortMark portMark);

  /// Opens the chosen port at the rate typed and closes the window. If that fails, or no port is
  /// chosen, a message box says so, the port that was open is closed, and the window stays open.
  void CmdOK_Click();

  /// Closes the window; the port stays as it is.
  void CmdCancel_Click();

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeControls();
  void LayOut();
  void FitToFont();
  void Form_Load();
  void ShowDescription();
  void ShowMarks();
  void KeepSpaceForDescription();
  std::string Description(int port) const;
  /// The number of the chosen port; 0 when none is.
  int ChosenPort() const;

  ComPort& comPort_;
  platform::MessageBoxes& messageBoxes_;
  PortDescription describePort_;
  PortMark portMark_;
  QListWidget* ComboCom_ = nullptr;
  QComboBox* ComboBaud_ = nullptr;
  QLabel* portLine_ = nullptr;
  QGridLayout* grid_ = nullptr;
  QPushButton* CmdOK_ = nullptr;
  QPushButton* CmdCancel_ = nullptr;
  bool wasLeft_ = false;
};

}  // namespace kelvara::link
