// The editor window over its form: keys reach the fields through the form's
// filters, results and rows follow each keystroke, the focus follows the
// form, sign boxes keep the form's rule, and the sketch zooms.
#include <gtest/gtest.h>

#include <cmath>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QWheelEvent>

#include "editor/editor_form.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/editor_window.h"
#include "ui/twips.h"

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
  template <class T>
  T* Find(const QString& name) {
    T* found = window.findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }
  // True when the whole of the widget shows in the rows' frame.
  bool InView(QWidget* widget) {
    auto* frame = Find<QWidget>("frameBase");
    const QRect onFrame(widget->mapTo(frame, QPoint(0, 0)), widget->size());
    return frame->rect().contains(onFrame);
  }

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

TEST_F(EditorWindowTest, TheNameBoxTakesNoMoreThanTheFiftyCharactersAParcelNameHolds) {
  QTest::mouseClick(window.cmdInsert(), Qt::LeftButton);
  auto* name = window.findChild<QLineEdit*>("txtParcel");
  ASSERT_NE(name, nullptr);
  QTest::keyClicks(name, QString(60, 'x'));
  EXPECT_EQ(name->text(), QString(50, 'x'));
  EXPECT_EQ(form.txtParcel.Text, std::string(50, 'x'));
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

TEST_F(EditorWindowTest, AFailingCourseCommandIsReportedWithTheSupportAndTheWindowGoesOn) {
  // No row is current: inserting before it fails in the form.
  ASSERT_EQ(form.CurrentRow, CourseLimit);
  window.RowMenu()->actions().at(2)->trigger();
  ASSERT_EQ(prompter.shown.size(), 1u);
  EXPECT_EQ(prompter.shown[0].Prompt.substr(0, 36), "Unknown Error Number 9 has occured.\n");
  EXPECT_NE(prompter.shown[0].Prompt.find("support@"), std::string::npos);

  // An azimuth too large for its whole degrees, grabbed, then turned.
  project.BearingMode = false;
  QTest::mouseClick(window.cmdInsert(), Qt::LeftButton);
  form.SetFieldText(0, CourseField::BearingLine, "99999999999\u00B0");
  window.Refresh();
  QTest::mouseClick(Find<QPushButton>("cmdLineInvert(0)"), Qt::LeftButton);
  ASSERT_EQ(prompter.shown.size(), 2u);
  EXPECT_EQ(prompter.shown[1].Prompt.substr(0, 36), "Unknown Error Number 6 has occured.\n");
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

// ---- The focus moved by the form --------------------------------------------------------

TEST_F(EditorWindowTest, AFieldThatACheckFocusesIsScrolledIntoView) {
  QTest::mouseClick(window.cmdInsert(), Qt::LeftButton);
  form.txtParcel.Text = "Lot 1";
  for (int i = 0; i < 25; ++i) {
    // Row 22's bearing came from the drawing: it computes, but is no bearing.
    form.SetFieldText(i, CourseField::BearingLine, i == 22 ? "N95\u00B00'0\"E" : "N10\u00B00'0\"E");
    form.SetFieldText(i, CourseField::DistanceLine, "10");
  }
  window.Refresh();
  window.VScroll1()->setValue(0);
  ASSERT_FALSE(InView(FieldOf(22, CourseField::BearingLine)));

  prompter.Answer({MsgAnswer::Yes});  // save although it fails the tolerance
  QTest::mouseClick(window.cmdSave(), Qt::LeftButton);
  ASSERT_EQ(QApplication::focusWidget(), FieldOf(22, CourseField::BearingLine));
  EXPECT_TRUE(InView(FieldOf(22, CourseField::BearingLine)));
}

// ---- Text that is no number -------------------------------------------------------------

TEST_F(EditorWindowTest, TextThatIsNoNumberShowsNotAvailableWithoutABox) {
  StartNewParcelAt(CourseField::BearingLine);
  QLineEdit* bearing = FieldOf(0, CourseField::BearingLine);
  QTest::keyClicks(bearing, "n45d0'0\"e");
  QTest::keyClick(bearing, Qt::Key_Tab);
  QLineEdit* distance = FieldOf(0, CourseField::DistanceLine);
  QTest::keyClicks(distance, "150.5");
  ASSERT_EQ(window.lblClosure()->text(), "150.5");
  QTest::keyClicks(distance, ".");
  EXPECT_TRUE(prompter.shown.empty()) << prompter.Prompts()[0];
  EXPECT_EQ(Find<QLabel>("lblClosure")->text(), "N/A");
  EXPECT_EQ(Find<QLabel>("lblArea")->text(), "N/A");
  EXPECT_EQ(Find<QLabel>("lblPrecision")->text(), "N/A");
  EXPECT_EQ(Find<QLabel>("lblDirection")->text(), "");
  QTest::keyClick(distance, Qt::Key_Backspace);
  EXPECT_EQ(window.lblClosure()->text(), "150.5");

  // The first letter typed over a whole bearing.
  bearing->setFocus();
  bearing->selectAll();
  QTest::keyClicks(bearing, "s");
  EXPECT_EQ(form.txtBearingLine[0].Text, "S");
  EXPECT_TRUE(prompter.shown.empty()) << prompter.Prompts()[0];
  EXPECT_EQ(window.lblClosure()->text(), "N/A");
}

// ---- Keys --------------------------------------------------------------------------------

TEST_F(EditorWindowTest, EditingKeysWorkAndPastedTextPassesTheFilter) {
  StartNewParcelAt(CourseField::DistanceLine);
  QLineEdit* distance = FieldOf(0, CourseField::DistanceLine);
  QTest::keyClicks(distance, "125.5");
  QTest::keyClick(distance, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(distance->selectedText(), "125.5");
  QTest::keyClick(distance, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "125.5");

  QApplication::clipboard()->setText("1x2.-5\n");
  QTest::keyClick(distance, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(distance->text(), "12.5");
  EXPECT_EQ(form.txtDistanceLine[0].Text, "12.5");
  QTest::keyClick(distance, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(distance->text(), "125.5");
  EXPECT_EQ(form.txtDistanceLine[0].Text, "125.5");

  // The field's own menu pastes through the filter as well: d is the degree
  // sign, n a capital, and the rest goes.
  QLineEdit* bearing = FieldOf(0, CourseField::BearingLine);
  QTest::mouseClick(bearing, Qt::LeftButton);
  QApplication::clipboard()->setText("n12d30x'0\"e");
  QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(5, 5), bearing->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(bearing, &menuEvent);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  QAction* paste = nullptr;
  for (QAction* a : menu->actions()) {
    if (a->text().startsWith(QCoreApplication::translate("QLineEdit", "&Paste"))) paste = a;
  }
  ASSERT_NE(paste, nullptr);
  paste->trigger();
  menu->close();
  EXPECT_EQ(bearing->text().toStdString(), "N12\u00B030'0\"E");
  EXPECT_EQ(form.txtBearingLine[0].Text, "N12\u00B030'0\"E");
}

TEST_F(EditorWindowTest, TheWheelStopsAtTheRowsInUse) {
  StartNewParcelAt(CourseField::BearingLine);
  QTest::keyClicks(FieldOf(0, CourseField::BearingLine), "n1d0'0\"e");
  QTest::keyClicks(FieldOf(0, CourseField::DistanceLine), "10");
  QTest::keyClicks(FieldOf(1, CourseField::DistanceLine), "10");
  ASSERT_TRUE(window.Row(2).cmdNo->isEnabled());
  auto* frame = Find<QWidget>("frameBase");
  for (int notch = 0; notch < 60; ++notch) {
    const QPointF at(100, 40);
    QWheelEvent wheel(at, frame->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(frame, &wheel);
  }
  EXPECT_TRUE(InView(window.Row(2).cmdNo)) << "the last open row stays in sight";
  EXPECT_GE(window.Row(0).frameLine->y(), -Px(800));
}

// ---- A dark desktop -----------------------------------------------------------------------

// The contrast of two colours, 1 to 21, as the accessibility guides reckon it.
double Contrast(const QColor& a, const QColor& b) {
  const auto luminance = [](const QColor& c) {
    const auto channel = [](double v) {
      return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
  };
  const double la = luminance(a) + 0.05;
  const double lb = luminance(b) + 0.05;
  return la > lb ? la / lb : lb / la;
}

// What lies behind a widget's text: its own fill, or that of the nearest
// ancestor that fills its background; the sketch is a white picture.
QColor BackgroundOf(QWidget* widget, QPalette::ColorGroup group) {
  for (QWidget* w = widget; w; w = w->parentWidget()) {
    if (w->objectName() == "picParcel") return Qt::white;
    if (w->autoFillBackground() || w->isWindow()) return w->palette().color(group, QPalette::Window);
  }
  return widget->palette().color(group, QPalette::Window);
}

TEST_F(EditorWindowTest, OnADarkDesktopEveryTextStandsOutFromItsBackground) {
  const QPalette light = QApplication::palette();
  QPalette dark;
  for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const bool off = g == QPalette::Disabled;
    dark.setColor(g, QPalette::Window, QColor(53, 53, 53));
    dark.setColor(g, QPalette::WindowText, off ? QColor(127, 127, 127) : Qt::white);
    dark.setColor(g, QPalette::Base, QColor(35, 35, 35));
    dark.setColor(g, QPalette::Text, off ? QColor(127, 127, 127) : Qt::white);
    dark.setColor(g, QPalette::Button, QColor(53, 53, 53));
    dark.setColor(g, QPalette::ButtonText, off ? QColor(127, 127, 127) : Qt::white);
  }
  QApplication::setPalette(dark);
  struct Restore {
    QPalette palette;
    ~Restore() { QApplication::setPalette(palette); }
  } restore{light};

  // A parcel with a curve, the closure judged, the focus on a row button.
  StartNewParcelAt(CourseField::BearingLine);
  QTest::keyClicks(FieldOf(0, CourseField::BearingLine), "n45d0'0\"e");
  QTest::keyClicks(FieldOf(0, CourseField::DistanceLine), "100");
  form.CurrentRow = 1;
  form.mnuChangeLineCurve_Click();
  window.Refresh();
  QTest::mouseClick(FieldOf(1, CourseField::BearingArc), Qt::LeftButton);
  QApplication::processEvents();

  int checked = 0;
  for (QWidget* w : window.findChildren<QWidget*>()) {
    if (!w->isVisibleTo(&window)) continue;
    QPalette::ColorRole fore = QPalette::WindowText;
    QPalette::ColorRole back = QPalette::NoRole;
    if (qobject_cast<QLineEdit*>(w)) {
      fore = QPalette::Text;
      back = QPalette::Base;
    } else if (qobject_cast<QPushButton*>(w)) {
      fore = QPalette::ButtonText;
      back = QPalette::Button;
    } else if (!qobject_cast<QLabel*>(w) && !qobject_cast<QAbstractButton*>(w)) {
      continue;
    }
    const QPalette::ColorGroup group = w->isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor behind = back == QPalette::NoRole ? BackgroundOf(w, group) : w->palette().color(group, back);
    EXPECT_GE(Contrast(w->palette().color(group, fore), behind), 3.0)
        << w->objectName().toStdString() << " " << w->palette().color(group, fore).name().toStdString()
        << " on " << behind.name().toStdString();
    ++checked;
  }
  EXPECT_GT(checked, 100);
}

}  // namespace
}  // namespace parvenna::ui
