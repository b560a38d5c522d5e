#include "store/setting_form.h"

#include <cctype>

#include "geometry/bearing_text.h"
#include "geometry/numbers.h"
#include "store/messages.h"
#include "store/paths.h"
#include "store/project_file.h"

namespace parvenna::store {

namespace {

constexpr int kBackspace = 8;
const char* const kOrderNames[4] = {messages::OrderArc, messages::OrderChord, messages::OrderRadius,
                                    messages::OrderBearing};

int Tick(bool value) { return value ? 1 : 0; }

template <class Statement>
bool Attempt(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const RunError&) {
    return false;
  }
}

}  // namespace

SettingForm::SettingForm(ProjectState& state, Prompter& prompter, SystemStore& store,
                         ProjectOpener& opener, ProjectWindows& windows)
    : Caption(messages::SettingTitle),
      state_(state),
      prompter_(prompter),
      store_(store),
      opener_(opener),
      windows_(windows) {
  optFeet[0].Caption = messages::OptFeet;
  optFeet[1].Caption = messages::OptMeters;
  optSquareAcres[0].Caption = messages::OptSquareFeet;
  optSquareAcres[1].Caption = messages::OptAcres;
  optSquareMeters[0].Caption = messages::OptSquareMeters;
  optSquareMeters[1].Caption = messages::OptHectares;
  frameSub[0].Caption = messages::FrameAreaFeet;
  frameSub[1].Caption = messages::FrameAreaMetres;
  frameTangential.Caption = messages::FrameTangential;
  optBearing[0].Caption = messages::OptBearing;
  optBearing[1].Caption = messages::OptAzimuth;
  const char* colours[] = {messages::ColourWhite, messages::ColourBlack, messages::ColourYellow,
                           messages::ColourBlue, messages::ColourOriginal};
  for (std::size_t i = 0; i < optBackColor.size(); ++i) optBackColor[i].Caption = colours[i];
  for (std::size_t i = 0; i < optForeColor.size(); ++i) optForeColor[i].Caption = colours[i];
  txtTolerance.ToolTipText = messages::TipTolerance;
  txtErrDecimal.ToolTipText = messages::TipErrDecimal;
  chkMini.ToolTipText = messages::TipMini;
  chkCurveOpt.ToolTipText = messages::TipCurveOpt;
  chkAutoInvert.ToolTipText = messages::TipAutoInvert;
  chkTangent.ToolTipText = messages::TipTangent;
  for (TextBox& box : txtWarning) box.ToolTipText = messages::TipWarning;
  for (TextBox& box : txtTangentTolerance) box.ToolTipText = messages::TipTangentTolerance;
  cmdOK = Button(messages::CaptionOK, messages::TipOK);
  cmdApply = Button(messages::CaptionApply, messages::TipApply, false);
  cmdDefault = Button(messages::CaptionDefault, messages::TipDefault);
  cmdAsDefault = Button(messages::CaptionAsDefault, messages::TipAsDefault);
  cmdCancel = Button(messages::CaptionCancel, messages::TipCancel);
  cmdForward = Button("", messages::TipForward);
  cmdBackward = Button("", messages::TipBackward);
}


int SettingForm::SelectedOf(const OptionButton* group, int count) const {
  for (int i = 0; i < count; ++i) {
    if (group[i].Value) return i;
  }
  return -1;
}

void SettingForm::ShowOrder(int arc, int chord, int radius, int bearing) {
  const int places[4] = {arc, chord, radius, bearing};
  for (int field = 0; field < 4; ++field) {
    if (places[field] < 1 || places[field] > 4) {
      throw RunError(ErrorNumber::SubscriptOutOfRange, "Control array element does not exist");
    }
    lblOrder[static_cast<std::size_t>(places[field] - 1)].Caption = kOrderNames[field];
  }
}

void SettingForm::ShowUnit(bool feet, bool squareUnits) {
  SetOption(optFeet, feet ? 0 : 1);
  SetOption(feet ? optSquareAcres : optSquareMeters, squareUnits ? 0 : 1);
  frameSub[0].Enabled = optSquareAcres[0].Enabled = optSquareAcres[1].Enabled = feet;
  frameSub[1].Enabled = optSquareMeters[0].Enabled = optSquareMeters[1].Enabled = !feet;
}

void SettingForm::ShowTangentEnabling() {
  bool on = chkTangent.Value == 1;
  for (TextBox& box : txtWarning) box.Enabled = on;
  for (TextBox& box : txtTangentTolerance) box.Enabled = on;
  for (Label& label : lblWarning) label.Enabled = on;
  for (Label& label : lblTangentTolerance) label.Enabled = on;
  frameTangential.Enabled = on;
}

int SettingForm::ForeOptionOf(int number) const {
  for (std::size_t i = 0; i + 1 < kForeColourNumbers.size(); ++i) {
    if (kForeColourNumbers[i] == number) return static_cast<int>(i);
  }
  return 4;
}

// Where the values shown by both the project's row and the defaults stand:
// the two tables keep them at positions of their own.
struct SettingForm::Positions {
  int arc, chord, radius, bearing, unitFeet, squareX, decimal, tolerance, minimize, addAreaCheck,
      autoInvert, tangentCheck, toolTipOn;
  std::array<int, 3> warning, tangent;
};

const SettingForm::Positions SettingForm::kProjectPositions = [] {
  using namespace project_columns;
  return Positions{txtArc, txtChord, txtRadius, txtBearing, UnitFeet, SquareX, ErrDecimal,
                   ClosureTolerance, Minimize, AddAreaCheck, AutoInvert, TangentCheck, ToolTipOn,
                   {WarningRanged, WarningRangem, WarningRanges},
                   {TangentToleranced, TangentTolerancem, TangentTolerances}};
}();

const SettingForm::Positions SettingForm::kSystemPositions = [] {
  using namespace system_columns;
  return Positions{txtArc, txtChord, txtRadius, txtBearing, unitfeet, SquareX, Decimal, Tolerance,
                   Minimize, AddAreaCheck, AutoInvert, TangentCheck, ToolTipOn,
                   {WarningRanged, WarningRangem, WarningRanges},
                   {TangentToleranced, TangentTolerancem, TangentTolerances}};
}();

void SettingForm::ShowCommonValues(const Recordset& rs, const Positions& at) {
  ShowOrder(rs.Get(at.arc).AsInteger(), rs.Get(at.chord).AsInteger(), rs.Get(at.radius).AsInteger(),
            rs.Get(at.bearing).AsInteger());
  ShowUnit(rs.Get(at.unitFeet).AsBool(), rs.Get(at.squareX).AsBool());
  txtTolerance.Text = rs.Get(at.tolerance).AsText();
  txtErrDecimal.Text = rs.Get(at.decimal).AsText();
  chkMini.Value = Tick(rs.Get(at.minimize).AsBool());
  chkCurveOpt.Value = Tick(rs.Get(at.addAreaCheck).AsBool());
  chkAutoInvert.Value = Tick(rs.Get(at.autoInvert).AsBool());
  chkTangent.Value = Tick(rs.Get(at.tangentCheck).AsBool());
  ShowTangentEnabling();
  for (std::size_t i = 0; i < 3; ++i) {
    txtWarning[i].Text = rs.Get(at.warning[i]).AsText();
    txtTangentTolerance[i].Text = rs.Get(at.tangent[i]).AsText();
  }
  chkToolTip.Value = Tick(rs.Get(at.toolTipOn).AsBool());
}

void SettingForm::Form_Load() {
  Loaded = true;
  lblTangentTolerance[1].Caption = lblWarning[1].Caption = std::string(DegreeMark);
  Centred = true;
  Selection = -1;
  for (Label& label : lblOrder) label.BackColor = colours::ButtonFace;

  using namespace project_columns;
  Database db = Database::Open(NativePath(state_.ProjectFile));
  Recordset rs = db.OpenRecordset("tblSetting");
  rs.MoveFirst();
  ShowCommonValues(rs, kProjectPositions);

  // Projects of earlier versions lack these columns and keep the presets.
  SetOption(optBearing, 0);
  txtDegreeSymbol.Text = "%%D";
  SetOption(optBackColor, 0);
  SetOption(optForeColor, 4);
  Attempt([&] { SetOption(optBearing, rs.Get(Bearing).AsBool() ? 0 : 1); });
  Attempt([&] {
    Value symbol = rs.Get(DegreeSymbol);
    if (!symbol.IsNull()) txtDegreeSymbol.Text = symbol.AsText();
  });
  Attempt([&] { SetOption(optBackColor, rs.Get(BackColor).AsInteger()); });
  Attempt([&] { SetOption(optForeColor, ForeOptionOf(rs.Get(ForeColor).AsInteger())); });

  rs.Close();
  db.Close();
  cmdApply.Enabled = false;
  ClearToolTips();
}

void SettingForm::Form_Unload() {
  Loaded = false;
  Topmost = false;
  windows_.SetEditorTopmost(true);
}

void SettingForm::SetText(TextBox& box, const std::string& text) {
  if (box.Text == text) return;
  box.Text = text;
  cmdApply.Enabled = true;
}

int SettingForm::KeyPress(TextBox& box, int keyAscii) {
  cmdApply.Enabled = true;
  bool digitsOnly = &box == &txtErrDecimal;
  for (TextBox& b : txtWarning) digitsOnly = digitsOnly || &box == &b;
  for (TextBox& b : txtTangentTolerance) digitsOnly = digitsOnly || &box == &b;
  bool isDigit = keyAscii >= '0' && keyAscii <= '9';
  if (digitsOnly) return isDigit || keyAscii == kBackspace ? keyAscii : 0;
  if (&box == &txtTolerance) return isDigit || keyAscii == '.' || keyAscii == kBackspace ? keyAscii : 0;
  return keyAscii;
}

void SettingForm::SetCheck(CheckBox& box, int value) {
  if (box.Value == value) return;
  box.Value = value;
  cmdApply.Enabled = true;
  if (&box == &chkTangent) ShowTangentEnabling();
}

void SettingForm::chkToolTip_MouseUp() {
  if (chkToolTip.Value == 1) Inform(prompter_, messages::RestartForToolTips);
}

void SettingForm::optFeet_Click(int index) {
  SetOption(optFeet, index);
  bool feet = index == 0;
  frameSub[0].Enabled = optSquareAcres[0].Enabled = optSquareAcres[1].Enabled = feet;
  frameSub[1].Enabled = optSquareMeters[0].Enabled = optSquareMeters[1].Enabled = !feet;
  // Each unit comes with its own sensible tolerance and decimals, whatever
  // was typed before.
  txtTolerance.Text = feet ? "0.01" : "0.001";
  txtErrDecimal.Text = feet ? "2" : "3";
  cmdApply.Enabled = true;
}

void SettingForm::MarkOrder(int index) {
  for (Label& label : lblOrder) {
    label.BackColor = colours::ButtonFace;
  }
  lblOrder[static_cast<std::size_t>(index)].BackColor = colours::MarkColour;
  Selection = index;
}

void SettingForm::lblOrder_Click(int index) {
  if (index < 0 || index > 3) return;
  MarkOrder(index);
  cmdApply.Enabled = true;
}

// The arrows swap the marked field with its neighbour. Place 1 is neither
// entered nor left by them: the field that opens a curve stays where the
// project put it.
void SettingForm::cmdBackward_Click() {
  if (Selection != 1 && Selection != 2) return;
  auto i = static_cast<std::size_t>(Selection);
  std::swap(lblOrder[i].Caption, lblOrder[i + 1].Caption);
  MarkOrder(Selection + 1);
}

void SettingForm::cmdForward_Click() {
  if (Selection != 2 && Selection != 3) return;
  auto i = static_cast<std::size_t>(Selection);
  std::swap(lblOrder[i].Caption, lblOrder[i - 1].Caption);
  MarkOrder(Selection - 1);
}

// The values that the project's row and the defaults' row share, under the
// column names of each: the order of the curve fields, the units, the numbers
// and the switches. Gives the tolerance written.
double SettingForm::WriteCommonValues(Recordset& rs, const char* decimalColumn,
                                      const char* toleranceColumn) {
  const char* columns[4] = {"txtArc", "txtChord", "txtRadius", "txtBearing"};
  for (int i = 0; i < 4; ++i) {
    for (int field = 0; field < 4; ++field) {
      if (lblOrder[static_cast<std::size_t>(i)].Caption == kOrderNames[field]) {
        rs.Set(columns[field], i + 1);
      }
    }
  }
  bool feet = optFeet[0].Value;
  rs.Set("unitfeet", feet);
  rs.Set("SquareX", feet ? optSquareAcres[0].Value : optSquareMeters[0].Value);
  double tolerance = TextToDouble(NumberFromText(txtTolerance.Text));
  rs.Set(toleranceColumn, tolerance);
  rs.Set("Minimize", chkMini.Value == 1);
  rs.Set(decimalColumn, NumberFromText(txtErrDecimal.Text));
  rs.Set("AddAreaCheck", chkCurveOpt.Value == 1);
  rs.Set("AutoInvert", chkAutoInvert.Value == 1);
  rs.Set("TangentCheck", chkTangent.Value == 1);
  const char* warning[3] = {"WarningRanged", "WarningRangem", "WarningRanges"};
  const char* tangent[3] = {"TangentToleranced", "TangentTolerancem", "TangentTolerances"};
  for (std::size_t i = 0; i < 3; ++i) {
    rs.Set(warning[i], NumberFromText(txtWarning[i].Text));
    rs.Set(tangent[i], NumberFromText(txtTangentTolerance[i].Text));
  }
  rs.Set("ToolTipOn", chkToolTip.Value == 1);
  return tolerance;
}

void SettingForm::cmdApply_Click() {
  {
    Database db = Database::Open(NativePath(state_.ProjectFile));
    Recordset rs = db.OpenRecordset("tblSetting");
    rs.MoveFirst();
    rs.Edit();
    txtTolerance.Text = PlainNumber(WriteCommonValues(rs, "ErrDecimal", "ClosureTolerance"));

    // A project of an earlier version lacks the newer columns: writing them
    // fails, and the user is told what the project cannot hold.
    if (!Attempt([&] { rs.Set("Bearing", optBearing[0].Value); })) {
      Inform(prompter_, messages::OldBearing, MsgIcon::Exclamation, messages::WarningTitle);
      SetOption(optBearing, 0);
    }
    if (!Attempt([&] { rs.Set("DegreeSymbol", txtDegreeSymbol.Text); })) {
      Inform(prompter_, messages::OldDegreeSymbol, MsgIcon::Exclamation, messages::WarningTitle);
      txtDegreeSymbol.Text = "%%D";
    }
    bool colourFailed =
        !Attempt([&] { rs.Set("BackColor", SelectedOf(optBackColor.data(), 4)); });
    int fore = SelectedOf(optForeColor.data(), 5);
    // White goes to a column of the old misspelt name, which no project has:
    // white as fore colour is refused, as projects of every version refuse it.
    if (!Attempt([&] {
          if (fore == 0) {
            rs.Set("FroeColor", kForeColourNumbers[0]);
          } else {
            rs.Set("ForeColor", kForeColourNumbers[static_cast<std::size_t>(fore < 0 ? 4 : fore)]);
          }
        })) {
      colourFailed = true;
    }
    if (colourFailed) {
      Inform(prompter_, messages::OldColour, MsgIcon::Exclamation, messages::WarningTitle);
      SetOption(optBackColor, 0);
      SetOption(optForeColor, 4);
    }
    rs.Update();
  }
  cmdApply.Enabled = false;
  for (Label& label : lblOrder) {
    label.BackColor = colours::ButtonFace;
  }

  opener_.LoadProjectSettings();
  windows_.ShowForeColourMenu(state_.ForeColourNumber);
  windows_.ShowBackColourMenu();
  opener_.mnuCurrentCAD_Click();
  windows_.LayoutArcFields();
  windows_.CalculateAndDraw();
}

void SettingForm::cmdOK_Click() {
  if (cmdApply.Enabled) cmdApply_Click();
  Form_Unload();
}

void SettingForm::cmdDefault_Click() {
  cmdApply.Enabled = true;
  using namespace system_columns;
  Database db = store_.OpenBriefly();
  Recordset rs = db.OpenRecordset("tblSetting");
  rs.MoveFirst();
  ShowCommonValues(rs, kSystemPositions);
  SetOption(optBackColor, 0);
  SetOption(optForeColor, 4);
  Attempt([&] { SetOption(optBearing, rs.Get(Bearing).AsBool() ? 0 : 1); });
  if (!Attempt([&] { txtDegreeSymbol.Text = rs.Get(DegreeSymbol).AsText(); })) {
    txtDegreeSymbol.Text = "%%D";
  }
  Attempt([&] { SetOption(optBackColor, rs.Get(BackColor).AsInteger()); });
  Attempt([&] { SetOption(optForeColor, ForeOptionOf(rs.Get(ForeColor).AsInteger())); });
}

void SettingForm::cmdAsDefault_Click() {
  Database db = store_.OpenBriefly();
  Recordset rs = db.OpenRecordset("tblSetting");
  rs.MoveFirst();
  rs.Edit();
  WriteCommonValues(rs, "Decimal", "Tolerance");
  Attempt([&] { rs.Set("Bearing", optBearing[0].Value); });
  Attempt([&] { rs.Set("DegreeSymbol", txtDegreeSymbol.Text); });
  Attempt([&] { rs.Set("BackColor", SelectedOf(optBackColor.data(), 4)); });
  Attempt([&] {
    int fore = SelectedOf(optForeColor.data(), 5);
    rs.Set("ForeColor", fore >= 0 && fore < 4 ? kForeColourNumbers[static_cast<std::size_t>(fore)] : 256);
  });
  rs.Update();
}

void SettingForm::ClearToolTips() {
  if (state_.ToolTipsOn) return;
  for (TextBox* box : {&txtTolerance, &txtErrDecimal, &txtDegreeSymbol}) box->ToolTipText.clear();
  for (TextBox& box : txtWarning) box.ToolTipText.clear();
  for (TextBox& box : txtTangentTolerance) box.ToolTipText.clear();
  for (CheckBox* box : {&chkMini, &chkCurveOpt, &chkAutoInvert, &chkTangent, &chkToolTip}) {
    box->ToolTipText.clear();
  }
  for (CommandButton* button :
       {&cmdOK, &cmdApply, &cmdDefault, &cmdAsDefault, &cmdCancel, &cmdForward, &cmdBackward}) {
    button->ToolTipText.clear();
  }
}

bool ToggleOptionMenu(ProjectState& state, Prompter& prompter, OptionMenu entry, bool& checked) {
  checked = !checked;
  int position = 0;
  bool* copy = nullptr;
  switch (entry) {
    case OptionMenu::mnuVerfyCurves:
      position = project_columns::AddAreaCheck;
      copy = &state.AddAreaCheckOn;
      break;
    case OptionMenu::mnuAutoInvert:
      position = project_columns::AutoInvert;
      copy = &state.AutoInvertOn;
      break;
    case OptionMenu::mnuVerfyTangent:
      position = project_columns::TangentCheck;
      copy = &state.TangentCheckOn;
      break;
    case OptionMenu::mnuMiniWindow:
      position = project_columns::Minimize;
      copy = &state.MinimizeDuringGrab;
      break;
  }
  if (!SaveProjectSetting(state, prompter, position, checked)) {
    checked = !checked;
    return false;
  }
  *copy = checked;
  return true;
}

}  // namespace parvenna::store
