// The dialogs over their models: what the user types reaches the form, what
// the form decides shows, and the files change only as the form says.
#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include <QApplication>
#include <QGroupBox>
#include <QTest>

#include "store/create_form.h"
#include "store/messages.h"
#include "store/setting_form.h"
#include "tests/store/store_fixture.h"
#include "tests/ui/ui_app.h"
#include "ui/about_dialog.h"
#include "ui/create_dialog.h"
#include "ui/setting_dialog.h"
#include "ui/splash_screen.h"
#include "ui/twips.h"

namespace parvenna::ui {
namespace {

namespace msg = store::messages;
namespace fs = std::filesystem;
using parvenna::testing::StoreWorld;

// With PARVENNA_DIALOG_SHOTS naming a directory, each dialog is saved there
// as a picture for a look by eye.
void SaveShot(QWidget& widget, const char* name) {
  const char* dir = std::getenv("PARVENNA_DIALOG_SHOTS");
  if (!dir) return;
  QApplication::processEvents();
  widget.grab().save(QString::fromStdString((fs::path(dir) / name).string()));
}

std::vector<std::string> Prompts(const StoreWorld& world) { return world.prompter.Prompts(); }

bool Shown(const StoreWorld& world, const char* text) {
  for (const std::string& p : Prompts(world)) {
    if (p == text) return true;
  }
  return false;
}

class CreateDialogTest : public ::testing::Test {
 protected:
  CreateDialogTest() {
    form.Form_Load();
    dialog.ShowForm();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  }

  QApplication& app = testing::TestApp();
  StoreWorld world;
  store::CreateForm form{world.state, world.prompter, world.system, world.opener, world.windows};
  CreateDialog dialog{form, world.prompter};
};

TEST_F(CreateDialogTest, TypedNameAndNewDirectoryMakeTheProjectAndCloseTheDialog) {
  EXPECT_FALSE(dialog.cmdCreate()->isEnabled());
  QTest::keyClicks(dialog.txtProjectName(), "x");
  EXPECT_TRUE(dialog.cmdCreate()->isEnabled());
  QTest::keyClick(dialog.txtProjectName(), Qt::Key_Backspace);
  EXPECT_FALSE(dialog.cmdCreate()->isEnabled());

  QTest::keyClicks(dialog.txtProjectName(), "Lot 7.b");
  const fs::path location = world.dir / "jobs" / "2024";
  QTest::keyClicks(dialog.txtProjectLocation(), QString::fromStdString(location.string()));
  world.prompter.Answer({MsgAnswer::Yes, MsgAnswer::Yes});  // make the directory; no drawing
  SaveShot(dialog, "create_dialog.png");
  QTest::mouseClick(dialog.cmdCreate(), Qt::LeftButton);

  EXPECT_TRUE(Shown(world, msg::AskCreateDirectory));
  EXPECT_TRUE(Shown(world, msg::AskNoDrawing));
  EXPECT_TRUE(fs::exists(location / "Lot 7.b.pvd"));
  EXPECT_EQ(world.state.ProjectFile, (location / "Lot 7.b.pvd").string());
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_TRUE(world.windows.Called("ShowNewParcelState"));
}

TEST_F(CreateDialogTest, AnExistingProjectKeepsTheDialogWithTheFocusOnTheName) {
  QTest::keyClicks(dialog.txtProjectName(), "sample_feet");
  QTest::keyClicks(dialog.txtProjectLocation(), QString::fromStdString(world.dir.WithSeparator()));
  dialog.cmdCreate()->setFocus();
  QTest::mouseClick(dialog.cmdCreate(), Qt::LeftButton);  // no drawing: Yes

  EXPECT_TRUE(Shown(world, msg::ProjectExists));
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(dialog.txtProjectName()->text(), "sample_feet");
  EXPECT_TRUE(dialog.txtProjectName()->hasFocus());
  EXPECT_TRUE(world.state.ProjectFile.empty());
}

TEST_F(CreateDialogTest, TheLocateDialogFillsTheLocationAndCancelKeepsIt) {
  QTest::mouseClick(dialog.cmdBrowseLoc(), Qt::LeftButton);
  DirLocateDialog* locate = dialog.frmDirLocate();
  ASSERT_TRUE(locate->isVisible());
  EXPECT_EQ(locate->windowTitle().toStdString(), msg::DirLocateTitle);
  EXPECT_EQ(locate->cmdCancel()->text().toStdString(), msg::CaptionCancel);

  fs::create_directories(world.dir / "plans");
  auto* directories = static_cast<QFileSystemModel*>(locate->Dir1()->model());
  locate->Dir1()->setCurrentIndex(directories->index(QString::fromStdString((world.dir / "plans").string())));
  SaveShot(*locate, "dir_locate_dialog.png");
  QTest::mouseClick(locate->cmdOK(), Qt::LeftButton);
  EXPECT_FALSE(locate->isVisible());
  EXPECT_EQ(dialog.txtProjectLocation()->text().toStdString(), (world.dir / "plans").string() + "/");

  // Cancel leaves the location as it was.
  QTest::mouseClick(dialog.cmdBrowseLoc(), Qt::LeftButton);
  locate->Dir1()->setCurrentIndex(directories->index(QString::fromStdString(world.dir.path().string())));
  QTest::mouseClick(locate->cmdCancel(), Qt::LeftButton);
  EXPECT_EQ(dialog.txtProjectLocation()->text().toStdString(), (world.dir / "plans").string() + "/");
  EXPECT_TRUE(dialog.isVisible());
}

TEST_F(CreateDialogTest, TheCloseBoxUnloadsWithoutKeepingTheAutoNameChoice) {
  const bool before = world.system.ReadAutoName(world.prompter);
  EXPECT_EQ(dialog.chkAutoName()->isChecked(), before);
  EXPECT_EQ(dialog.txtProjectName()->toolTip().toStdString(), msg::TipProjectName);
  EXPECT_EQ(dialog.txtCADFile()->toolTip().toStdString(), msg::TipCadFile);
  QTest::mouseClick(dialog.chkAutoName(), Qt::LeftButton);
  dialog.close();
  EXPECT_FALSE(form.Loaded);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(world.system.ReadAutoName(world.prompter), before);
}

class SettingDialogTest : public ::testing::Test {
 protected:
  void Open(bool toolTips = true) {
    world.state.ToolTipsOn = toolTips;
    world.state.ProjectFile = world.Path("sample_feet.pvd");
    form.Form_Load();
    dialog.ShowForm();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  }
  store::Value Stored(const char* column) {
    return store::Database::Open(world.state.ProjectFile).OpenRecordset("tblSetting").Get(column);
  }
  static void Retype(QLineEdit* edit, const char* keys) {
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, keys);
  }

  QApplication& app = testing::TestApp();
  StoreWorld world;
  store::SettingForm form{world.state, world.prompter, world.system, world.opener, world.windows};
  SettingDialog dialog{form, world.prompter};
};

TEST_F(SettingDialogTest, ApplyWritesTheTypedToleranceAndTheFiltersDropOtherKeys) {
  Open();
  EXPECT_EQ(dialog.txtTolerance()->text(), "0.01");
  EXPECT_FALSE(dialog.cmdApply()->isEnabled());
  SaveShot(dialog, "setting_dialog.png");

  Retype(dialog.txtTolerance(), "0.05ft");
  Retype(dialog.txtErrDecimal(), "3.x");
  EXPECT_EQ(dialog.txtTolerance()->text(), "0.05");
  EXPECT_EQ(dialog.txtErrDecimal()->text(), "3");
  EXPECT_TRUE(dialog.cmdApply()->isEnabled());
  QTest::mouseClick(dialog.cmdApply(), Qt::LeftButton);

  EXPECT_DOUBLE_EQ(Stored("ClosureTolerance").AsDouble(), 0.05);
  EXPECT_EQ(Stored("ErrDecimal").AsInteger(), 3);
  EXPECT_FALSE(dialog.cmdApply()->isEnabled());
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_TRUE(world.windows.Called("CalculateAndDraw"));
}

TEST_F(SettingDialogTest, OkWithNothingChangedWritesNothingAndEscapeCancels) {
  Open();
  const fs::file_time_type written = fs::last_write_time(world.state.ProjectFile);
  QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(fs::last_write_time(world.state.ProjectFile), written);

  form.Form_Load();
  dialog.ShowForm();
  Retype(dialog.txtTolerance(), "9");
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_DOUBLE_EQ(Stored("ClosureTolerance").AsDouble(), 0.01);
}

TEST_F(SettingDialogTest, ClicksShowTheFormsRules) {
  Open();
  // The arrows: the marked field moves left, the mark with it.
  const QString third = dialog.lblOrder(2)->text();
  QTest::mouseClick(dialog.lblOrder(2), Qt::LeftButton);
  QTest::mouseClick(dialog.cmdForward(), Qt::LeftButton);
  EXPECT_EQ(dialog.lblOrder(1)->text(), third);
  EXPECT_EQ(dialog.lblOrder(1)->palette().color(QPalette::Window), ToQColor(colours::MarkColour));
  EXPECT_NE(dialog.lblOrder(2)->palette().color(QPalette::Window), ToQColor(colours::MarkColour));

  // Metres: the unit's own tolerance and the other area frame.
  QTest::mouseClick(dialog.optFeet(1), Qt::LeftButton);
  EXPECT_TRUE(dialog.optFeet(1)->isChecked());
  EXPECT_EQ(dialog.txtTolerance()->text(), "0.001");
  EXPECT_EQ(dialog.txtErrDecimal()->text(), "3");
  EXPECT_FALSE(dialog.frameSub(0)->isEnabled());
  EXPECT_TRUE(dialog.optSquareMeters(0)->isEnabled());

  // No tangent check: its figures cannot be typed.
  ASSERT_TRUE(dialog.chkTangent()->isChecked());
  QTest::mouseClick(dialog.chkTangent(), Qt::LeftButton);
  EXPECT_FALSE(dialog.txtWarning(0)->isEnabled());
  EXPECT_FALSE(dialog.frameTangential()->isEnabled());

  // Ticking tooltips on asks for a restart.
  dialog.chkToolTip()->setChecked(false);
  form.chkToolTip.Value = 0;
  QTest::mouseClick(dialog.chkToolTip(), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_TRUE(Shown(world, msg::RestartForToolTips));
}

TEST_F(SettingDialogTest, EveryCaptionAndTooltipStandsAsUsersKnowIt) {
  Open();
  QStringList texts;
  for (QLabel* label : dialog.findChildren<QLabel*>()) texts << label->text();
  for (QGroupBox* frame : dialog.findChildren<QGroupBox*>()) texts << frame->title();
  for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>()) texts << button->text();
  for (const char* text :
       {msg::LabelTolerance, msg::LabelMinimize, msg::LabelDecimals, msg::LabelForceArc,
        msg::LabelAutoInvert, msg::LabelTangentCheck, msg::LabelToolTip, msg::LabelDegreeSymbol,
        msg::FrameOrder, msg::FrameUnits, msg::FrameAreaFeet, msg::FrameAreaMetres,
        msg::FrameTangential, msg::FrameBearing, msg::FrameBackColour, msg::FrameForeColour,
        msg::LabelUnder, msg::LabelAcceptable, msg::LabelNotChecked, msg::Instructions,
        msg::CaptionApply, msg::CaptionDefault, msg::CaptionAsDefault, msg::CaptionCancel,
        msg::OptSquareMeters, msg::OptHectares, msg::ColourOriginal, "\u00B0"}) {
    EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;
  }
  EXPECT_EQ(dialog.windowTitle().toStdString(), msg::SettingTitle);

  const std::pair<QWidget*, const char*> tips[] = {
      {dialog.txtTolerance(), msg::TipTolerance},     {dialog.txtErrDecimal(), msg::TipErrDecimal},
      {dialog.chkMini(), msg::TipMini},               {dialog.chkCurveOpt(), msg::TipCurveOpt},
      {dialog.chkAutoInvert(), msg::TipAutoInvert},   {dialog.chkTangent(), msg::TipTangent},
      {dialog.txtWarning(2), msg::TipWarning},        {dialog.txtTangentTolerance(0), msg::TipTangentTolerance},
      {dialog.cmdAsDefault(), msg::TipAsDefault},     {dialog.cmdApply(), msg::TipApply},
      {dialog.cmdDefault(), msg::TipDefault},         {dialog.cmdCancel(), msg::TipCancel},
      {dialog.cmdOK(), msg::TipOK},                   {dialog.cmdForward(), msg::TipForward},
      {dialog.cmdBackward(), msg::TipBackward}};
  for (const auto& [widget, tip] : tips) EXPECT_EQ(widget->toolTip().toStdString(), tip);
}

TEST_F(SettingDialogTest, TooltipsSwitchedOffLeaveEveryControlWithout) {
  Open(false);
  for (QWidget* widget : dialog.findChildren<QWidget*>()) {
    EXPECT_TRUE(widget->toolTip().isEmpty()) << widget->metaObject()->className();
  }
}

TEST(AboutAndSplash, ShowTheVersionAndTheStoresCredits) {
  testing::TestApp();
  StoreWorld world;
  AboutDialog about("Program Version: 1.0.0", world.system.ReadCredits());
  about.show();
  const QString credits = about.txtCredits()->toPlainText();
  EXPECT_TRUE(credits.startsWith("Design and programming\nThe Parvenna team\n")) << credits.toStdString();
  EXPECT_TRUE(credits.contains("Plan examiners of the pilot offices"));
  EXPECT_EQ(about.lblPrgVer()->text(), "Program Version: 1.0.0");
  SaveShot(about, "about_dialog.png");

  SplashScreen splash("Program Version: 1.0.0");
  splash.SetVersionLine("Program Version: 1.2.3");
  splash.ShowCentred();
  EXPECT_EQ(splash.lblPrgVer(), "Program Version: 1.2.3");
  SaveShot(splash, "splash_screen.png");
}

}  // namespace
}  // namespace parvenna::ui
