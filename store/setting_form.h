#pragma once

#include <array>
#include <string>

#include "platform/prompter.h"
#include "platform/controls.h"
#include "platform/run_error.h"
#include "store/project_opening.h"
#include "store/project_state.h"
#include "store/project_windows.h"
#include "store/system_store.h"

namespace parvenna::store {

// frmSetting, "Project Options": edits the settings row of the open project,
// fills itself from the defaults of the system store, or makes its values
// those defaults.
//
// Invariants: nothing is written before cmdApply (or cmdOK with cmdApply
// enabled); the field in place 1 of the curve order is never moved by the
// arrows; a click on a unit overwrites the tolerance and the decimals.
class SettingForm {
 public:
  SettingForm(ProjectState& state, Prompter& prompter, SystemStore& store, ProjectOpener& opener,
              ProjectWindows& windows);

  std::string Caption;
  std::array<Label, 4> lblOrder;
  int Selection = -1;  // the marked order label; -1 none
  std::array<OptionButton, 2> optFeet;
  std::array<OptionButton, 2> optSquareAcres;
  std::array<OptionButton, 2> optSquareMeters;
  std::array<Frame, 2> frameSub;
  TextBox txtTolerance;
  TextBox txtErrDecimal;
  TextBox txtDegreeSymbol;
  std::array<TextBox, 3> txtWarning;
  std::array<TextBox, 3> txtTangentTolerance;
  CheckBox chkMini;
  CheckBox chkCurveOpt;
  CheckBox chkAutoInvert;
  CheckBox chkTangent;
  CheckBox chkToolTip;
  std::array<Label, 5> lblWarning;
  std::array<Label, 5> lblTangentTolerance;
  Frame frameTangential;
  std::array<OptionButton, 2> optBearing;
  std::array<OptionButton, 4> optBackColor;
  std::array<OptionButton, 5> optForeColor;
  CommandButton cmdOK, cmdApply, cmdDefault, cmdAsDefault, cmdCancel, cmdForward, cmdBackward;
  bool Loaded = false;
  bool Centred = false;
  bool Topmost = false;

  void Form_Load();
  void Form_Activate() { Topmost = true; }
  void Form_Unload();

  // The user's changes; each enables cmdApply.
  void SetText(TextBox& box, const std::string& text);
  // The key filter of the text boxes: the key passed on, or 0 when dropped.
  int KeyPress(TextBox& box, int keyAscii);
  void SetCheck(CheckBox& box, int value);
  void chkToolTip_MouseUp();
  void optFeet_Click(int index);
  void optSquareAcres_Click(int index) { Select(optSquareAcres, index); }
  void optSquareMeters_Click(int index) { Select(optSquareMeters, index); }
  void optBearing_Click(int index) { Select(optBearing, index); }
  void optBackColor_Click(int index) { Select(optBackColor, index); }
  void optForeColor_Click(int index) { Select(optForeColor, index); }
  void lblOrder_Click(int index);
  void cmdForward_Click();
  void cmdBackward_Click();

  void cmdApply_Click();
  void cmdOK_Click();
  void cmdCancel_Click() { Form_Unload(); }
  void cmdDefault_Click();
  void cmdAsDefault_Click();

  // With tooltips off, every control's tooltip becomes empty.
  void ClearToolTips();

 private:
  template <std::size_t N>
  void Select(std::array<OptionButton, N>& group, int index) {
    SetOption(group, index);
    cmdApply.Enabled = true;
  }
  template <std::size_t N>
  static void SetOption(std::array<OptionButton, N>& group, int index) {
    if (index < 0 || index >= static_cast<int>(N)) {
      throw RunError(ErrorNumber::SubscriptOutOfRange, "Control array element does not exist");
    }
    for (std::size_t i = 0; i < N; ++i) group[i].Value = static_cast<int>(i) == index;
  }
  double WriteCommonValues(Recordset& rs, const char* decimalColumn, const char* toleranceColumn);
  struct Positions;
  static const Positions kProjectPositions;
  static const Positions kSystemPositions;
  void ShowCommonValues(const Recordset& rs, const Positions& at);
  void ShowUnit(bool feet, bool squareUnits);
  void ShowTangentEnabling();
  void ShowOrder(int arc, int chord, int radius, int bearing);
  void MarkOrder(int index);
  int ForeOptionOf(int number) const;
  int SelectedOf(const OptionButton* group, int count) const;

  ProjectState& state_;
  Prompter& prompter_;
  SystemStore& store_;
  ProjectOpener& opener_;
  ProjectWindows& windows_;
};

// The four option entries of the main menu that toggle a setting directly.
enum class OptionMenu { mnuVerfyCurves, mnuAutoInvert, mnuVerfyTangent, mnuMiniWindow };

// Flips the tick and writes the setting; on success the state follows, on a
// failure the tick flips back. The result is the write's.
bool ToggleOptionMenu(ProjectState& state, Prompter& prompter, OptionMenu entry, bool& checked);
// mnuSetting and the four entries are enabled exactly while a project is open.
inline bool OptionMenusEnabled(const ProjectState& state) { return !state.ProjectFile.empty(); }

}  // namespace parvenna::store
