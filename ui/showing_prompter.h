#pragma once

#include <functional>
#include <utility>

#include "platform/prompter.h"

namespace parvenna::ui {

// The message boxes of the main window's forms: before a box shows, the
// windows show what their forms hold, so that the field a box speaks of (a
// check moves the focus to it, out of sight) is on the screen while the box
// is read.
class ShowingPrompter : public Prompter {
 public:
  ShowingPrompter(Prompter& boxes, std::function<void()> showForms)
      : boxes_(boxes), showForms_(std::move(showForms)) {}

  MsgAnswer MsgBox(const Message& message) override {
    if (showForms_) showForms_();
    return boxes_.MsgBox(message);
  }

 private:
  Prompter& boxes_;
  std::function<void()> showForms_;
};

}  // namespace parvenna::ui
