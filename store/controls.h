#pragma once

#include <string>

#include "platform/colour.h"

// The controls of the store's dialogs as plain state, with the property names
// the widgets mirror. Assigning through the forms' setters fires the events
// that the same assignment fires on screen.
namespace parvenna::store {

struct TextBox {
  std::string Text;
  bool Enabled = true;
  std::string ToolTipText;
};

struct Label {
  std::string Caption;
  bool Enabled = true;
  Rgb BackColor{};  // the system colour unless marked
  bool Marked = false;
};

struct CheckBox {
  std::string Caption;
  int Value = 0;  // 0 clear, 1 ticked, 2 grey
  bool Enabled = true;
  std::string ToolTipText;
};

struct OptionButton {
  std::string Caption;
  bool Value = false;
  bool Enabled = true;
};

struct CommandButton {
  std::string Caption;
  bool Enabled = true;
  std::string ToolTipText;
};

struct Frame {
  std::string Caption;
  bool Enabled = true;
};

}  // namespace parvenna::store
