#include "store/setting_form.h"

#include <gtest/gtest.h>

#include "store/messages.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::ReadFile;
using parvenna::testing::StoreWorld;

struct SettingWorld : StoreWorld {
  SettingForm form{state, prompter, system, opener, windows};
  SettingWorld() {
    state.ProjectFile = Path("sample_feet.pvd");
    form.Form_Load();
  }
  Value Stored(const char* column) {
    return Database::Open(state.ProjectFile).OpenRecordset("tblSetting").Get(column);
  }
};

std::vector<std::string> Order(const SettingForm& form) {
  std::vector<std::string> out;
  for (const Label& label : form.lblOrder) out.push_back(label.Caption);
  return out;
}

TEST(SettingForm, LoadsTheRowByPositionAndLeavesApplyDisabled) {
  SettingWorld world;
  EXPECT_EQ(Order(world.form), (std::vector<std::string>{"Arc", "Radius", "Bearing", "Chord"}));
  EXPECT_TRUE(world.form.optFeet[0].Value);
  EXPECT_TRUE(world.form.optSquareAcres[0].Enabled);
  EXPECT_FALSE(world.form.frameSub[1].Enabled);
  EXPECT_EQ(world.form.txtTolerance.Text, "0.01");
  EXPECT_EQ(world.form.txtErrDecimal.Text, "2");
  EXPECT_EQ(world.form.txtTangentTolerance[2].Text, "30");
  EXPECT_EQ(world.form.txtWarning[0].Text, "5");
  EXPECT_TRUE(world.form.txtWarning[0].Enabled);
  EXPECT_TRUE(world.form.optForeColor[4].Value);
  EXPECT_EQ(world.form.txtDegreeSymbol.Text, "%%D");
  EXPECT_EQ(world.form.lblWarning[1].Caption, "\u00B0");
  EXPECT_FALSE(world.form.cmdApply.Enabled);
}

TEST(SettingForm, ArrowsNeverMoveTheFieldInPlaceOne) {
  SettingWorld world;
  std::vector<std::string> start = Order(world.form);
  for (int selection : {0, 1, 2, 3}) {
    for (bool forward : {true, false}) {
      SettingWorld w;
      w.form.lblOrder_Click(selection);
      forward ? w.form.cmdForward_Click() : w.form.cmdBackward_Click();
      std::vector<std::string> order = Order(w.form);
      EXPECT_EQ(order[0], start[0]);
      bool acts = forward ? selection >= 2 : (selection == 1 || selection == 2);
      EXPECT_EQ(order != start, acts) << selection << forward;
      int moved = acts ? selection + (forward ? -1 : 1) : selection;
      EXPECT_EQ(w.form.Selection, moved);
      EXPECT_EQ(w.form.lblOrder[static_cast<std::size_t>(moved)].BackColor, colours::MarkColour);
    }
  }
}

TEST(SettingForm, AUnitClickOverwritesToleranceAndDecimals) {
  SettingWorld world;
  world.form.SetText(world.form.txtTolerance, "0.5");
  world.form.optFeet_Click(1);
  world.form.optFeet_Click(0);
  EXPECT_EQ(world.form.txtTolerance.Text, "0.01");
  world.form.optFeet_Click(1);
  EXPECT_EQ(world.form.txtTolerance.Text, "0.001");
  EXPECT_EQ(world.form.txtErrDecimal.Text, "3");
  EXPECT_TRUE(world.form.optSquareMeters[0].Enabled);
  EXPECT_FALSE(world.form.optSquareAcres[0].Enabled);
}

TEST(SettingForm, KeysAreFilteredByBox) {
  SettingWorld world;
  SettingForm& f = world.form;
  struct Case {
    TextBox* box;
    int key;
    bool passes;
  } cases[] = {{&f.txtErrDecimal, '7', true},        {&f.txtErrDecimal, '.', false},
               {&f.txtErrDecimal, 8, true},          {&f.txtWarning[1], 'a', false},
               {&f.txtTangentTolerance[2], '-', false}, {&f.txtTolerance, '.', true},
               {&f.txtTolerance, ',', false},        {&f.txtDegreeSymbol, '%', true}};
  for (const Case& c : cases) {
    f.cmdApply.Enabled = false;
    EXPECT_EQ(f.KeyPress(*c.box, c.key), c.passes ? c.key : 0) << c.key;
    EXPECT_TRUE(f.cmdApply.Enabled);  // every key counts as a change
  }
}

TEST(SettingForm, ApplyWritesTheDialogAndRefreshesTheProgram) {
  SettingWorld world;
  world.form.lblOrder_Click(2);
  world.form.cmdBackward_Click();  // Arc, Radius, Chord, Bearing
  world.form.SetText(world.form.txtTolerance, "0.0200");
  world.form.SetText(world.form.txtErrDecimal, "3");
  world.form.SetCheck(world.form.chkTangent, 0);
  EXPECT_FALSE(world.form.txtWarning[0].Enabled);
  world.form.optBearing_Click(1);
  world.form.optBackColor_Click(3);
  world.form.optForeColor_Click(2);
  world.form.SetText(world.form.txtDegreeSymbol, "dd");
  world.form.cmdOK_Click();
  EXPECT_TRUE(world.prompter.shown.empty());
  EXPECT_EQ(world.form.txtTolerance.Text, "0.02");
  EXPECT_EQ(world.Stored("txtChord").AsInteger(), 3);
  EXPECT_EQ(world.Stored("txtBearing").AsInteger(), 4);
  EXPECT_FALSE(world.state.TangentCheckOn);
  EXPECT_FALSE(world.state.BearingMode);
  EXPECT_EQ(world.state.ErrDecimals, 3);
  EXPECT_EQ(world.state.DegreeSymbolText, "dd");
  EXPECT_EQ(world.state.BackBlue, 255);
  EXPECT_EQ(world.state.BackRed, 0);
  EXPECT_EQ(world.state.ForeColourNumber, 2);
  EXPECT_TRUE(world.windows.Called("LayoutArcFields"));
  EXPECT_TRUE(world.windows.Called("CalculateAndDraw"));
  EXPECT_FALSE(world.form.Loaded);
}

TEST(SettingForm, OkWithoutChangesAndCancelWriteNothing) {
  SettingWorld world;
  std::string before = ReadFile(world.state.ProjectFile);
  world.form.cmdOK_Click();
  SettingWorld other;
  other.form.SetText(other.form.txtTolerance, "9");
  other.form.cmdCancel_Click();
  EXPECT_EQ(ReadFile(world.state.ProjectFile), before);
  EXPECT_EQ(ReadFile(other.state.ProjectFile), before);
  EXPECT_TRUE(world.windows.calls == std::vector<std::string>{"Topmost"});
}

TEST(SettingForm, WhiteAsForeColourIsRefusedAndTheStoredColourStays) {
  SettingWorld world;
  world.form.optForeColor_Click(0);
  world.form.optBackColor_Click(2);
  world.form.cmdApply_Click();
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::OldColour});
  EXPECT_EQ(world.Stored("ForeColor").AsInteger(), 256);
  EXPECT_TRUE(world.form.optForeColor[4].Value);
  EXPECT_TRUE(world.form.optBackColor[0].Value);
}

TEST(SettingForm, DefaultsComeFromTheSystemStoreAndGoBackToIt) {
  SettingWorld world;
  {
    Database db = world.system.OpenBriefly();
    db.Execute("UPDATE tblSetting SET unitfeet = 0, SquareX = 0, Decimal = 4, Tolerance = 0.005, "
               "ForeColor = 5, Bearing = 0, DegreeSymbol = 'o'");
  }
  world.form.cmdDefault_Click();
  EXPECT_TRUE(world.form.cmdApply.Enabled);
  EXPECT_TRUE(world.form.optFeet[1].Value);
  EXPECT_TRUE(world.form.optSquareMeters[1].Value);
  EXPECT_EQ(world.form.txtErrDecimal.Text, "4");
  EXPECT_EQ(world.form.txtTolerance.Text, "0.005");
  EXPECT_TRUE(world.form.optForeColor[3].Value);
  EXPECT_TRUE(world.form.optBearing[1].Value);
  EXPECT_EQ(world.Stored("ErrDecimal").AsInteger(), 2);  // nothing written yet

  world.form.optFeet_Click(0);
  world.form.optForeColor_Click(4);
  world.form.cmdAsDefault_Click();
  Recordset defaults = world.system.OpenBriefly().OpenRecordset("tblSetting");
  EXPECT_TRUE(defaults.Get("unitfeet").AsBool());
  EXPECT_EQ(defaults.Get("Tolerance").AsDouble(), 0.01);
  EXPECT_EQ(defaults.Get("Decimal").AsInteger(), 2);
  EXPECT_EQ(defaults.Get("ForeColor").AsInteger(), 256);
  EXPECT_TRUE(world.prompter.shown.empty());
}

TEST(OptionMenus, ATickFollowsTheWriteOrFlipsBack) {
  SettingWorld world;
  bool checked = world.state.AutoInvertOn;
  EXPECT_TRUE(ToggleOptionMenu(world.state, world.prompter, OptionMenu::mnuAutoInvert, checked));
  EXPECT_TRUE(checked);
  EXPECT_TRUE(world.state.AutoInvertOn);
  EXPECT_TRUE(world.Stored("AutoInvert").AsBool());

  world.state.ProjectFile = world.Path("gone.pvd");
  bool mini = false;
  EXPECT_FALSE(ToggleOptionMenu(world.state, world.prompter, OptionMenu::mnuMiniWindow, mini));
  EXPECT_FALSE(mini);
  EXPECT_FALSE(world.state.MinimizeDuringGrab);
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::GeneralError});
  EXPECT_TRUE(OptionMenusEnabled(world.state));
  world.state.ProjectFile.clear();
  EXPECT_FALSE(OptionMenusEnabled(world.state));
}

TEST(SettingForm, TooltipsOffEmptyEveryTooltip) {
  SettingWorld world;
  world.state.ToolTipsOn = false;
  world.form.ClearToolTips();
  EXPECT_EQ(world.form.txtTolerance.ToolTipText, "");
  EXPECT_EQ(world.form.cmdBackward.ToolTipText, "");
  world.form.SetCheck(world.form.chkToolTip, 1);
  world.form.chkToolTip_MouseUp();
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::RestartForToolTips});
}

}  // namespace
}  // namespace parvenna::store
