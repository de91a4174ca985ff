#pragma once

#include <QDialog>
#include <map>

#include "convert/Converter.h"
#include "convert/ConverterFields.h"
#include "platform/Beeper.h"
#include "platform/widgets/DialogManners.h"

class QGridLayout;
class QLineEdit;

namespace kelvara::convert {

/// The converter's window: a field for each unit and each form of an antenna's identity, with a
/// button that updates the other fields from it. Modeless; it remembers nothing once it is closed.
class FrmConvert : public QDialog {
  Q_OBJECT

 public:
  FrmConvert(platform::Beeper& beeper, QWidget* parent);

  /// Opens the window, empty; one that is open comes to the front as it is.
  void Open() { widgets::ShowInFront(*this); }  // NOLINT(bugprone-virtual-near-miss): not modal

 protected:
  /// Enter runs the Update of most fields; the key goes on.
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* AddFrame(const ConverterFrame& frame);
  void AddField(const ConverterField& field, QWidget& frame, QGridLayout& layout);
  void FitToFont();

  /// Writes the fields that follow from one. A text that cannot be used beeps once and writes none.
  void UpdateFrom(Field source);

  /// Does the same from the field that has the keyboard, where Enter has that meaning.
  void UpdateFromFocusedField();

  void Form_Unload();

  QLineEdit*& EditOf(Field field) { return edits_[field]; }

  platform::Beeper& beeper_;
  Converter converter_;
  std::map<Field, QLineEdit*> edits_;
  int labelCount_ = 0;
};

}  // namespace kelvara::convert
