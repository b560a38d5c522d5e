#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/prompter.h"

namespace parvenna::ui {

// Message boxes as QMessageBox: the title, icon, buttons and default button
// of the message, modal over the parent window.
class QtPrompter : public Prompter {
 public:
  explicit QtPrompter(QWidget* parent = nullptr) : parent_(parent) {}
  void SetParent(QWidget* parent) { parent_ = parent; }

  MsgAnswer MsgBox(const Message& message) override;

 private:
  QPointer<QWidget> parent_;
};

}  // namespace parvenna::ui
