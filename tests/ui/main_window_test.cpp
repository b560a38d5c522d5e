// The main window as a user meets it: what shows at start and around a
// refusal, where the editor and the drawing stand and how they follow the
// window, grabbing with and without the editor minimised, the recent menu,
// the keyboard's access keys, tooltips and captions of the project's
// settings, and links with nothing to show them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "drawing/drawing_document.h"
#include "drawing/view_form.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/program_dir.h"
#include "tests/ui/ui_app.h"
#include "ui/command_line.h"
#include "ui/drawing_view.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"
#include "ui/twips.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using parvenna::testing::ScriptedPrompter;

// Keeps, for every box shown, the names of the windows that stood on the
// screen while it showed.
class WatchingPrompter : public ScriptedPrompter {
 public:
  std::vector<std::vector<std::string>> windowsAtBox;
  std::function<void()> atBox;
  MsgAnswer MsgBox(const Message& message) override {
    if (atBox) atBox();
    std::vector<std::string> names;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (w->isVisible()) names.push_back(w->objectName().toStdString());
    }
    windowsAtBox.push_back(std::move(names));
    return ScriptedPrompter::MsgBox(message);
  }
};

class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() { testing::TestApp(); }
  ~MainWindowTest() override {
    if (window) window->Shell().frmEditor.ExitConfirmed = true;
  }

  std::string Sample() const { return dir.Sample(); }
  void SetProject(const std::string& assignments) {
    store::Database::Open(dir / "sample_feet.pvd").Execute("UPDATE tblSetting SET " + assignments);
  }

  MainWindow& Start(const std::string& commandLine) {
    window = std::make_unique<MainWindow>(dir.path().string(), &prompter);
    EXPECT_TRUE(window->Start(commandLine));
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    QTest::qWait(20);
    return *window;
  }

  template <class T>
  T* Find(const char* name) const {
    T* found = window->findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QMdiArea* Area() const { return window->findChild<QMdiArea*>(); }
  QMdiSubWindow* SubWindowOf(const char* name) const {
    return qobject_cast<QMdiSubWindow*>(Find<QWidget>(name)->parentWidget());
  }
  QRect AreaRect() const { return Area()->viewport()->rect(); }
  void Click(const char* button) { QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton); }

  // Clicks the first `count` labels of the sample drawing in the first view.
  void PickLabels(int count) {
    drawing::ViewForm& view = window->Shell().frmView;
    const drawing::DrawingDocument* doc = view.View(0).Document();
    ASSERT_NE(doc, nullptr);
    auto* widget = Find<DrawingView>("Dbcocx1");
    int clicked = 0;
    for (const drawing::Entity& e : doc->entities) {
      if (e.kind != drawing::EntityKind::Text || doc->layers[e.layer].name == "TITLE") continue;
      const auto corners = drawing::TextCorners(doc->TextOf(e));
      const drawing::Point centre{(corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2};
      const CanvasPoint at = view.View(0).ToScreen(centre);
      QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(static_cast<int>(at.x), static_cast<int>(at.y)));
      if (++clicked == count) break;
    }
    QTest::qWait(20);
  }

  testing::ProgramDir dir;
  WatchingPrompter prompter;
  std::unique_ptr<MainWindow> window;
};

// ---- Start ----------------------------------------------------------------------------

TEST_F(MainWindowTest, AStoreThatCannotBeHeldIsRefusedBeforeTheMainWindowShows) {
  fs::remove(dir / "ParvennaPro.pvs");
  window = std::make_unique<MainWindow>(dir.path().string(), &prompter);
  EXPECT_FALSE(window->Start(""));
  ASSERT_FALSE(prompter.shown.empty());
  for (const auto& shown : prompter.windowsAtBox) EXPECT_THAT(shown, Not(Contains("frmMain")));
  EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindowTest, OnceTheStoreIsHeldTheMainWindowComesUpMaximised) {
  window = std::make_unique<MainWindow>(dir.path().string(), &prompter);
  ASSERT_TRUE(window->Start(""));
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->windowState() & Qt::WindowMaximized);
}

TEST_F(MainWindowTest, ARelativePathOnTheCommandLineIsRecordedOnceAsAWholePath) {
  const QString here = QString::fromStdString(dir.path().string());
  EXPECT_EQ(CommandLineOf({"parvenna", "./sample_feet.pvd"}, here), Sample());
  EXPECT_EQ(CommandLineOf({"parvenna", "\"../" + QDir(here).dirName() + "/sample_feet.pvd\""}, here),
            Sample());
  EXPECT_EQ(CommandLineOf({"parvenna", "\"" + QString::fromStdString(Sample()) + "\""}, "/elsewhere"),
            "\"" + Sample() + "\"");
  EXPECT_EQ(CommandLineOf({"parvenna"}, here), "");

  Start(CommandLineOf({"parvenna", "./sample_feet.pvd"}, here));
  const auto& recent = window->Shell().state.RecentProjects;
  EXPECT_EQ(recent[0], Sample());
  EXPECT_EQ(std::count(recent.begin(), recent.end(), Sample()), 1);
}

// ---- The recent menu ----------------------------------------------------------------

TEST_F(MainWindowTest, EachRecentEntryOpensTheProjectItsCaptionNames) {
  fs::copy_file(dir / "sample_feet.pvd", dir / "second.pvd");
  MainWindow& w = Start((dir / "second.pvd").string());
  auto* first = Find<QAction>("mnuHistory(0)");
  EXPECT_THAT(first->text().toStdString(), HasSubstr("second.pvd"));

  // The entry that names the sample opens the sample.
  QAction* sample = nullptr;
  for (int i = 0; i < store::kRecentCount; ++i) {
    auto* entry = w.findChild<QAction*>(QString("mnuHistory(%1)").arg(i));
    if (entry && entry->isVisible() && entry->text().endsWith("sample_feet.pvd")) sample = entry;
  }
  ASSERT_NE(sample, nullptr);
  sample->trigger();
  EXPECT_EQ(w.Shell().state.ProjectFile, Sample());
  EXPECT_THAT(Find<QAction>("mnuHistory(0)")->text().toStdString(), HasSubstr("sample_feet.pvd"));
}

// ---- Layout -------------------------------------------------------------------------

TEST_F(MainWindowTest, TheDrawingFillsTheAreaAndFollowsItWithItsButtonsInSight) {
  MainWindow& w = Start(Sample());
  QMdiSubWindow* editor = SubWindowOf("frmEditor");
  QMdiSubWindow* drawing = SubWindowOf("frmView");
  EXPECT_EQ(drawing->geometry(), AreaRect());
  EXPECT_EQ(editor->pos(), QPoint(Px(10), Px(1340)));
  EXPECT_GE(editor->height(), Px(5750));
  // No button of the drawing's bar lies under the editor.
  for (QToolButton* button : Find<QWidget>("frmView")->findChildren<QToolButton*>()) {
    if (!button->isVisible()) continue;
    const QRect onArea(button->mapTo(Area()->viewport(), QPoint(0, 0)), button->size());
    EXPECT_FALSE(onArea.intersects(editor->geometry())) << button->objectName().toStdString();
  }

  w.showNormal();
  w.resize(1000, 720);
  QTest::qWait(20);
  EXPECT_EQ(drawing->geometry(), AreaRect()) << "the drawing follows the main window";
  EXPECT_EQ(editor->geometry().bottom(), AreaRect().bottom()) << "and the editor left in its place";
  // An editor the user has moved stays where it was put.
  editor->move(200, 150);
  w.resize(1100, 760);
  QTest::qWait(20);
  EXPECT_EQ(drawing->geometry(), AreaRect());
  EXPECT_EQ(editor->pos(), QPoint(200, 150));
}

TEST_F(MainWindowTest, NewAndEditLeaveTheSplitLayoutAsItIsAndItFollowsTheWindow) {
  MainWindow& w = Start(Sample());
  QMdiSubWindow* editor = SubWindowOf("frmEditor");
  QMdiSubWindow* drawing = SubWindowOf("frmView");
  Find<QAction>("mnuSplitVertical")->trigger();
  const QRect editorSplit = editor->geometry();
  const QRect drawingSplit = drawing->geometry();
  EXPECT_EQ(editorSplit.top(), 0);
  EXPECT_EQ(drawingSplit.left(), editorSplit.right() + 1);
  EXPECT_EQ(drawingSplit.right(), AreaRect().right());

  Click("cmdInsert");
  EXPECT_EQ(drawing->geometry(), drawingSplit) << "New";
  EXPECT_EQ(editor->geometry(), editorSplit);
  Click("cmdCancel");
  Click("cmdEdit");
  EXPECT_EQ(drawing->geometry(), drawingSplit) << "Edit";
  EXPECT_EQ(editor->geometry(), editorSplit);
  Click("cmdCancel");

  w.showNormal();
  w.resize(1100, 700);
  QTest::qWait(20);
  EXPECT_EQ(drawing->geometry().right(), AreaRect().right());
  EXPECT_EQ(drawing->geometry().bottom(), AreaRect().bottom());
  EXPECT_EQ(editor->geometry().bottom(), AreaRect().bottom());
}

// ---- Grabbing -------------------------------------------------------------------------

TEST_F(MainWindowTest, WithMinimizeOnTheEditorStaysInSightAndDoneBringsItBackFilled) {
  SetProject("Minimize = 1");
  Start(Sample());
  QMdiSubWindow* editor = SubWindowOf("frmEditor");
  Click("cmdInsert");
  auto* bearing = Find<QLineEdit>("txtBearingLine(0)");
  QTest::mouseDClick(bearing, Qt::LeftButton);
  ASSERT_TRUE(editor->isMinimized());

  PickLabels(2);
  EXPECT_EQ(Area()->subWindowList(QMdiArea::StackingOrder).last(), editor)
      << "the minimised editor is not covered by the drawing";
  EXPECT_TRUE(bearing->text().isEmpty()) << "the values wait for Done";

  Click("cmdDone");
  QTest::qWait(20);
  EXPECT_FALSE(editor->isMinimized());
  EXPECT_EQ(Area()->subWindowList(QMdiArea::StackingOrder).last(), editor);
  EXPECT_FALSE(bearing->text().isEmpty());
}

TEST_F(MainWindowTest, GrabbedValuesWaitForDoneWhileTheEditorIsClicked) {
  Start(Sample());
  Click("cmdInsert");
  auto* bearing = Find<QLineEdit>("txtBearingLine(0)");
  QTest::mouseDClick(bearing, Qt::LeftButton);
  PickLabels(2);
  // A click on the sketch brings the editor to the front.
  QTest::mouseClick(Find<QWidget>("picParcel"), Qt::LeftButton);
  QTest::qWait(20);
  EXPECT_TRUE(bearing->text().isEmpty());
  EXPECT_EQ(window->Shell().frmEditor.grab.GrabQueue.size(), 2u);

  Click("cmdDone");
  EXPECT_FALSE(bearing->text().isEmpty());
}

TEST_F(MainWindowTest, TheFieldABoxSpeaksOfShowsWhileTheBoxIsUp) {
  MainWindow& w = Start(Sample());
  Click("cmdInsert");
  editor::EditorForm& form = w.Shell().frmEditor;
  form.txtParcel.Text = "Lot 9";
  for (int i = 0; i < 25; ++i) {
    // Row 22's bearing came from the drawing: it computes, but is no bearing.
    form.SetFieldText(i, CourseField::BearingLine, i == 22 ? "N95\u00B00'0\"E" : "N10\u00B00'0\"E");
    form.SetFieldText(i, CourseField::DistanceLine, "10");
  }
  w.RefreshAll();
  w.Editor().VScroll1()->setValue(0);
  auto* field = Find<QLineEdit>("txtBearingLine(22)");
  auto* rows = Find<QWidget>("frameBase");
  std::vector<bool> inView;
  prompter.atBox = [&] {
    inView.push_back(rows->rect().contains(QRect(field->mapTo(rows, QPoint(0, 0)), field->size())));
  };
  prompter.Answer({MsgAnswer::Yes});  // save although it fails the tolerance
  Click("cmdSave");
  ASSERT_EQ(prompter.shown.size(), 2u);
  EXPECT_THAT(prompter.shown[1].Prompt, HasSubstr("bearing"));
  EXPECT_EQ(inView, (std::vector<bool>{false, true}));
}

// ---- Keyboard -------------------------------------------------------------------------

TEST_F(MainWindowTest, EachAccessKeyReachesOneControl) {
  MainWindow& w = Start(Sample());
  // The user works in the editor: its keys are the ones that count.
  Find<QWidget>("cbxParcel")->setFocus();
  ASSERT_EQ(Area()->activeSubWindow(), SubWindowOf("frmEditor"));
  // The editor's Edit button has a key of its own.
  auto* cmdEdit = Find<QPushButton>("cmdEdit");
  const QKeySequence key = QKeySequence::mnemonic(cmdEdit->text());
  ASSERT_FALSE(key.isEmpty());
  EXPECT_NE(key, QKeySequence(Qt::ALT | Qt::Key_E));
  QTest::keySequence(&w, key);
  QTest::qWait(300);  // a key clicks a button as the mouse would, in a moment
  EXPECT_TRUE(w.Shell().frmEditor.cmdSave.Enabled) << "the parcel is in editing";
  // Alt+E drops the Edit menu down.
  QTest::keyClick(&w, Qt::Key_E, Qt::AltModifier);
  QTest::qWait(20);
  auto* edit = Find<QMenu>("mnuEdit");
  EXPECT_TRUE(edit->isVisible());
  edit->hide();
}

// ---- Settings of the project ------------------------------------------------------------

TEST_F(MainWindowTest, TooltipsOffEmptiesTheTooltipsOfEveryLoadedWindow) {
  SetProject("ToolTipOn = 0");
  MainWindow& w = Start(Sample());
  Find<QAction>("mnuNew")->trigger();
  QTest::qWait(20);
  QList<QWidget*> widgets = w.findChildren<QWidget*>();
  for (QWidget* top : QApplication::topLevelWidgets()) {
    widgets.push_back(top);
    for (QWidget* child : top->findChildren<QWidget*>()) widgets.push_back(child);
  }
  for (QWidget* widget : widgets) {
    EXPECT_TRUE(widget->toolTip().isEmpty())
        << widget->objectName().toStdString() << ": " << widget->toolTip().toStdString();
  }
  // The sketch keeps no tooltip through a zoom either.
  QTest::mouseDClick(Find<QWidget>("picParcel"), Qt::LeftButton);
  EXPECT_TRUE(Find<QWidget>("picParcel")->toolTip().isEmpty());
}

TEST_F(MainWindowTest, TheBearingCaptionOfTheLineRowsFollowsTheProjectsNotation) {
  MainWindow& w = Start(Sample());
  EXPECT_EQ(Find<QLabel>("lblB(0)")->text(), "Bearing");
  w.Shell().frmEditor.ExitConfirmed = true;

  SetProject("Bearing = 0");
  Start(Sample());
  EXPECT_EQ(Find<QLabel>("lblB(0)")->text(), "Azimuth");
  EXPECT_EQ(Find<QLabel>("lblB(7)")->text(), "Azimuth");
}

// ---- Links ----------------------------------------------------------------------------

TEST_F(MainWindowTest, HelpWithNothingToShowItSaysSoAndLeavesTheWindowUp) {
  MainWindow& w = Start("");
  Find<QAction>("mnuHelp")->trigger();
  QTest::qWait(20);
  EXPECT_FALSE(w.isMinimized());
  ASSERT_EQ(prompter.shown.size(), 1u);
  EXPECT_THAT(prompter.shown[0].Prompt, HasSubstr("help/index.html"));
}

}  // namespace
}  // namespace parvenna::ui
