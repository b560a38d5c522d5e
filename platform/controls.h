#pragma once

#include <string>
#include <vector>

#include "platform/colour.h"

// The state of the controls of a form, under the property names that the
// handlers use. A form's model holds these; its widget mirrors them. Layout
// figures are in twips.
namespace parvenna {

namespace colours {
// The system colours, as the default theme paints them.
inline constexpr Rgb Window{255, 255, 255};
inline constexpr Rgb ButtonFace{240, 240, 240};
inline constexpr Rgb Menu{240, 240, 240};
}  // namespace colours

struct Label {
  std::string Caption;
  Rgb ForeColor = colours::Black;
  Rgb BackColor = colours::ButtonFace;
  bool Enabled = true;
  bool Visible = true;
  double Left = 0;
  double Top = 0;
};

struct TextBox {
  std::string Text;
  bool Enabled = true;
  bool Visible = true;
  Rgb BackColor = colours::Window;
  double Left = 0;
  double Top = 0;
  int TabIndex = 0;
  std::string ToolTipText;
};

struct CommandButton {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
  Rgb BackColor = colours::ButtonFace;
  double Left = 0;
  double Top = 0;
  int TabIndex = 0;
  std::string ToolTipText;
};

// Value: 0 clear, 1 ticked, 2 grey.
struct CheckBox {
  int Value = 0;
  bool Enabled = true;
  bool Visible = true;
  std::string Caption;
  double Left = 0;
  int TabIndex = 0;
  std::string ToolTipText;
};

// One of a group of option buttons: at most one of the group has Value set.
struct OptionButton {
  std::string Caption;
  bool Value = false;
  bool Enabled = true;
  std::string ToolTipText;
};

struct Frame {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
  double Top = 0;
  double Height = 0;
};

struct ComboBox {
  std::vector<std::string> List;
  std::vector<long> ItemData;
  int ListIndex = -1;
  std::string Text;
  bool Enabled = true;
  Rgb BackColor = colours::Window;
  std::string ToolTipText;

  int ListCount() const { return static_cast<int>(List.size()); }
};

struct ScrollBar {
  int Value = 0;
  int Max = 32767;
  int SmallChange = 1;
  int LargeChange = 1;
  double Height = 0;
};

struct MenuItem {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
  bool Checked = false;
};

inline CommandButton Button(std::string caption, std::string toolTip = "", bool enabled = true) {
  CommandButton b;
  b.Caption = std::move(caption);
  b.ToolTipText = std::move(toolTip);
  b.Enabled = enabled;
  return b;
}

inline OptionButton Option(std::string caption, std::string toolTip = "") {
  OptionButton o;
  o.Caption = std::move(caption);
  o.ToolTipText = std::move(toolTip);
  return o;
}

inline MenuItem Menu(std::string caption) {
  MenuItem m;
  m.Caption = std::move(caption);
  return m;
}

}  // namespace parvenna
