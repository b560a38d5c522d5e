#pragma once

#include <functional>
#include <string>

#include <QButtonGroup>
#include <QDialog>
#include <QString>

#include "platform/controls.h"
#include "platform/prompter.h"

class QAbstractButton;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace parvenna::ui {

// The frame of the dialogs over a form's model: handlers run through Run,
// which reports what they did not handle as the program's unknown error and
// then reads the model again. The widget mirrors the model and decides
// nothing.
class FormDialog : public QDialog {
 public:
  FormDialog(Prompter& prompter, QWidget* parent);

  // Copies the model's state onto the controls.
  virtual void Refresh() = 0;

 protected:
  // Runs a handler of the model. The outermost run refreshes the dialog.
  void Run(const std::function<void()>& handler);
  bool Running() const { return depth_ > 0; }
  // Centred on the screen that holds the dialog (CenterForm).
  void CentreOnScreen();
  // Shown over the other windows, and the form told that it came to the front.
  void Present(bool centred, const std::function<void()>& activate);

  Prompter& prompter_;

 private:
  int depth_ = 0;
};

QString Q(const std::string& text);
std::string S(const QString& text);

// One control's state onto its widget, with the widget's signals held back so
// that what the model set does not come back as the user's change.
void Mirror(QLineEdit* edit, const TextBox& box);
void Mirror(QCheckBox* check, const CheckBox& box);
void Mirror(QPushButton* button, const CommandButton& command);
void Mirror(QAbstractButton* option, const OptionButton& model);
void Mirror(QLabel* label, const Label& model);
void Mirror(QGroupBox* frame, const Frame& model);
// An exclusive group of option buttons, in the model's order: none checked
// when the model has none set.
void MirrorGroup(QButtonGroup* group, const OptionButton* models, int count);

}  // namespace parvenna::ui
