// The editor window over its form: keys reach the fields through the form's
// filters, results and rows follow each keystroke, the focus follows the
// form, sign boxes keep the form's rule, and the sketch zooms.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "editor/editor_form.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/editor_window.h"

namespace parvenna::ui {
namespace {

using editor::EditorForm;
using parvenna::testing::ScriptedPrompter;

class WindowHost : public editor::EditorHost {
 public:
  EditorWindow* window = nullptr;
  int drawingShown = 0;
  void BringUpDrawing() override { ++drawingShown; }
  void MinimizeEditor() override {}
  void ShowRowMenu(int row) override { window->ShowRowMenu(row); }
};

class EditorWindowTest : public ::testing::Test {
 protected:
  EditorWindowTest() {
    project.ArcOrder = {2, 4, 3, 1};  // bearing, arc, radius, chord
    form.EnableEditorFrames(true);
    host.window = &window;
    window.bind();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  QLineEdit* FieldOf(int row, CourseField field) { return window.Row(row).Field(field); }

  // A new parcel, with the focus in a field of row 0 as the mouse puts it.
  void StartNewParcelAt(CourseField field) {
    QTest::mouseClick(window.cmdInsert(), Qt::LeftButton);
    QTest::mouseClick(FieldOf(0, field), Qt::LeftButton);
  }

  QApplication& app = testing::TestApp();
  store::ProjectState project;
  ScriptedPrompter prompter;
  PainterCanvas canvas;
  WindowHost host;
  EditorForm form{project, prompter, canvas, host};
  EditorWindow window{form, canvas};
};

TEST_F(EditorWindowTest, TypingRowZeroShowsClosureAndOpensTheNextRow) {
  StartNewParcelAt(CourseField::BearingLine);
  QLineEdit* bearing = FieldOf(0, CourseField::BearingLine);
  ASSERT_EQ(QApplication::focusWidget(), bearing);
  EXPECT_EQ(bearing->palette().color(QPalette::Base), QColor(128, 255, 128));  // the mark

  // d becomes the degree sign, n and e capitals; x and the point are refused.
  QTest::keyClicks(bearing, "n45d30x'15\".e");
  EXPECT_EQ(bearing->text().toStdString(), "N45\u00B030'15\"E");
  EXPECT_EQ(form.txtBearingLine[0].Text, bearing->text().toStdString());
  EXPECT_FALSE(window.Row(1).cmdNo->isEnabled()) << "a bearing opens no row";

  // Tab goes on to the distance of the same row; a sign or a letter is refused.
  QTest::keyClick(bearing, Qt::Key_Tab);
  QLineEdit* distance = FieldOf(0, CourseField::DistanceLine);
  ASSERT_EQ(QApplication::focusWidget(), distance);
  QTest::keyClicks(distance, "-1e00.5");
  EXPECT_EQ(distance->text(), "100.5");
  EXPECT_EQ(bearing->palette().color(QPalette::Base), QColor(Qt::white));

  EXPECT_FALSE(window.lblClosure()->text().isEmpty());
  EXPECT_EQ(window.lblClosure()->text().toStdString(), form.results.lblClosure.Caption);
  EXPECT_EQ(window.ResultLabel(3)->text().toStdString(), form.results.lblArea.Caption);
  EXPECT_TRUE(window.Row(1).cmdNo->isEnabled());
  EXPECT_TRUE(window.Row(1).txtBearingLine->isEnabled());
  EXPECT_FALSE(window.Row(2).cmdNo->isEnabled());
  EXPECT_FALSE(window.picParcel()->LineNumber(0)->isHidden()) << "the course is on the sketch";

  // Backspace is a key of the field's own.
  QTest::keyClick(distance, Qt::Key_Backspace);
  EXPECT_EQ(form.txtDistanceLine[0].Text, "100.");
}

TEST_F(EditorWindowTest, BadBearingSendsTheFocusBackToIt) {
  StartNewParcelAt(CourseField::BearingLine);
  QLineEdit* bearing = FieldOf(0, CourseField::BearingLine);
  QTest::keyClicks(bearing, "N45");
  QTest::mouseClick(FieldOf(0, CourseField::DistanceLine), Qt::LeftButton);

  ASSERT_EQ(prompter.Prompts(), std::vector<std::string>{"The bearing is not formatted correctly."});
  EXPECT_EQ(QApplication::focusWidget(), bearing);
  EXPECT_EQ(bearing->palette().color(QPalette::Base), QColor(128, 255, 128));
  EXPECT_EQ(form.CurrentRow, 0);
  EXPECT_EQ(bearing->text(), "N45") << "nothing is corrected";
}

TEST_F(EditorWindowTest, RowMenuTurnsARowAndSignBoxesKeepTheirRule) {
  StartNewParcelAt(CourseField::BearingLine);
  CourseRowView& row = window.Row(0);
  ASSERT_EQ(window.Row(1).frameLine->y(), 27);  // 400 twips

  QTest::mouseClick(row.cmdNo, Qt::RightButton);
  QMenu* menu = window.RowMenu();
  ASSERT_TRUE(menu->isVisible());
  QAction* change = menu->actions().at(4);
  EXPECT_EQ(change->text(), "Change to curve");
  change->trigger();
  menu->hide();

  EXPECT_TRUE(row.frameArc->isVisible());
  EXPECT_FALSE(row.frameLine->isVisible());
  EXPECT_EQ(window.Row(1).frameLine->y(), 53) << "row 1 moved down to 800 twips";

  // A click ticks the box clicked and clears its partner, and never clears.
  QTest::mouseClick(row.chkMinus, Qt::LeftButton);
  EXPECT_EQ(form.chksign[1].Value, SignTicked);
  EXPECT_EQ(form.chksign[0].Value, SignClear);
  EXPECT_EQ(row.chkMinus->checkState(), Qt::Checked);
  EXPECT_EQ(row.chkPlus->checkState(), Qt::Unchecked);
  QTest::mouseClick(row.chkMinus, Qt::LeftButton);
  EXPECT_EQ(row.chkMinus->checkState(), Qt::Checked);

  // Space runs the box's own toggle only: both boxes can end up ticked.
  row.chkPlus->setFocus();
  QTest::keyClick(row.chkPlus, Qt::Key_Space);
  EXPECT_EQ(row.chkPlus->checkState(), Qt::Checked);
  EXPECT_EQ(row.chkMinus->checkState(), Qt::Checked);
  QTest::keyClick(row.chkPlus, Qt::Key_Space);
  EXPECT_EQ(row.chkPlus->checkState(), Qt::Unchecked);
}

TEST_F(EditorWindowTest, UnhandledFailureIsReportedAndTheWindowGoesOn) {
  // No row is current: inserting before it fails in the form.
  ASSERT_EQ(form.CurrentRow, CourseLimit);
  window.RowMenu()->actions().at(2)->trigger();
  EXPECT_EQ(prompter.Prompts(), std::vector<std::string>{"Unkown Error Number 9 has occured."});
  EXPECT_EQ(prompter.shown.back().Title, "Unkown Error");
  QTest::mouseClick(window.cmdInsert(), Qt::LeftButton);
  EXPECT_TRUE(window.cmdSave()->isEnabled());
}

TEST_F(EditorWindowTest, DoubleClickZoomsTheSketchAndBack) {
  SketchView* sketch = window.picParcel();
  const QRect normal = sketch->geometry();
  EXPECT_EQ(normal, QRect(3870 / 15, 0, 333, 333));
  EXPECT_EQ(sketch->toolTip(), "Double click to zoom in");

  QTest::mouseDClick(sketch, Qt::LeftButton);
  EXPECT_EQ(sketch->geometry(), QRect(0, 0, window.width(), window.height()));
  EXPECT_EQ(sketch->toolTip(), "Double Click to restore normal view");
  EXPECT_EQ(canvas.Image().size(), sketch->size());

  QTest::mouseDClick(sketch, Qt::LeftButton);
  EXPECT_EQ(sketch->geometry(), normal);
  EXPECT_EQ(canvas.Image().size(), normal.size());
}

}  // namespace
}  // namespace parvenna::ui
