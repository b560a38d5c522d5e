#include "ui/form_dialog.h"
#include "ui/guarded.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>

#include "platform/run_error.h"
#include "ui/twips.h"

namespace parvenna::ui {

FormDialog::FormDialog(Prompter& prompter, QWidget* parent) : QDialog(parent), prompter_(prompter) {}

void FormDialog::Run(const std::function<void()>& handler) {
  ++depth_;
  RunGuarded(prompter_, handler);
  if (--depth_ == 0) Refresh();
}

void FormDialog::CentreOnScreen() {
  QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
  if (!screen) return;
  adjustSize();
  QRect area = screen->availableGeometry();
  move(area.left() + (area.width() - frameGeometry().width()) / 2,
       area.top() + (area.height() - frameGeometry().height()) / 2);
}

void FormDialog::Present(bool centred, const std::function<void()>& activate) {
  Refresh();
  if (centred) CentreOnScreen();
  show();
  raise();
  activateWindow();
  Run(activate);
}

QString Q(const std::string& text) { return QString::fromStdString(text); }
std::string S(const QString& text) { return text.toStdString(); }

void Mirror(QLineEdit* edit, const TextBox& box) {
  QSignalBlocker block(edit);
  if (edit->text() != Q(box.Text)) edit->setText(Q(box.Text));
  edit->setEnabled(box.Enabled);
  edit->setVisible(box.Visible);
  edit->setToolTip(Q(box.ToolTipText));
}

void Mirror(QCheckBox* check, const CheckBox& box) {
  QSignalBlocker block(check);
  if (!box.Caption.empty()) check->setText(Q(box.Caption));
  check->setCheckState(box.Value == 1   ? Qt::Checked
                       : box.Value == 2 ? Qt::PartiallyChecked
                                        : Qt::Unchecked);
  check->setEnabled(box.Enabled);
  check->setVisible(box.Visible);
  check->setToolTip(Q(box.ToolTipText));
}

void Mirror(QPushButton* button, const CommandButton& command) {
  QSignalBlocker block(button);
  if (!command.Caption.empty()) button->setText(Q(command.Caption));
  button->setEnabled(command.Enabled);
  button->setVisible(command.Visible);
  button->setToolTip(Q(command.ToolTipText));
}

void Mirror(QAbstractButton* option, const OptionButton& model) {
  QSignalBlocker block(option);
  option->setText(Q(model.Caption));
  option->setEnabled(model.Enabled);
  option->setToolTip(Q(model.ToolTipText));
}

// A label whose model has no caption keeps the one the dialog gave it.
void Mirror(QLabel* label, const Label& model) {
  if (!model.Caption.empty()) label->setText(Q(model.Caption));
  label->setEnabled(model.Enabled);
  label->setVisible(model.Visible);
}

void Mirror(QGroupBox* frame, const Frame& model) {
  QSignalBlocker block(frame);
  frame->setTitle(Q(model.Caption));
  frame->setEnabled(model.Enabled);
  frame->setVisible(model.Visible);
}

void MirrorGroup(QButtonGroup* group, const OptionButton* models, int count) {
  group->setExclusive(false);
  for (int i = 0; i < count; ++i) {
    QAbstractButton* button = group->button(i);
    if (!button) continue;
    Mirror(button, models[i]);
    QSignalBlocker block(button);
    button->setChecked(models[i].Value);
  }
  group->setExclusive(true);
}

}  // namespace parvenna::ui
