#include "ui/qt_prompter.h"

#include <vector>

#include <QApplication>
#include <QMessageBox>

namespace parvenna::ui {
namespace {

std::vector<QMessageBox::StandardButton> ButtonsOf(MsgButtons buttons) {
  switch (buttons) {
    case MsgButtons::OK: return {QMessageBox::Ok};
    case MsgButtons::OKCancel: return {QMessageBox::Ok, QMessageBox::Cancel};
    case MsgButtons::YesNo: return {QMessageBox::Yes, QMessageBox::No};
    case MsgButtons::YesNoCancel: return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
  }
  return {QMessageBox::Ok};
}

QMessageBox::Icon IconOf(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::None: return QMessageBox::NoIcon;
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
  }
  return QMessageBox::NoIcon;
}

MsgAnswer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Yes: return MsgAnswer::Yes;
    case QMessageBox::No: return MsgAnswer::No;
    case QMessageBox::Cancel: return MsgAnswer::Cancel;
    default: return MsgAnswer::OK;
  }
}

}  // namespace

MsgAnswer QtPrompter::MsgBox(const Message& message) {
  // A box with no owner of its own belongs to the window in front, so that no
  // window kept on top can hide it.
  QWidget* owner = parent_ ? parent_.data() : QApplication::activeWindow();
  QMessageBox box(IconOf(message.Icon), QString::fromStdString(message.Title),
                  QString::fromStdString(message.Prompt), QMessageBox::NoButton, owner);
  const std::vector<QMessageBox::StandardButton> buttons = ButtonsOf(message.Buttons);
  for (QMessageBox::StandardButton b : buttons) box.addButton(b);
  const std::size_t defaultIndex = static_cast<std::size_t>(message.DefaultButton) - 1;
  if (defaultIndex < buttons.size()) box.setDefaultButton(buttons[defaultIndex]);
  // A question has no way out but its answers; a box with Cancel closes as Cancel.
  if (message.Buttons == MsgButtons::OK) box.setEscapeButton(QMessageBox::Ok);
  return AnswerOf(box.exec());
}

}  // namespace parvenna::ui
