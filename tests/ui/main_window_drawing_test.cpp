// The drawing window inside the main window: a label grabbed shows as used
// in the drawing until the editor's Cancel or a new parcel clears the list.
#include <gtest/gtest.h>

#include <filesystem>

#include <QPushButton>
#include <QTest>

#include "drawing/viewer.h"
#include "shell/shell.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/drawing_view.h"
#include "ui/drawing_window.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;

// Pixels of the used mark's colour (magenta), antialiased edges included.
int MarkedPixels(const QImage& frame) {
  int n = 0;
  for (int y = 0; y < frame.height(); ++y) {
    for (int x = 0; x < frame.width(); ++x) {
      const QColor c = frame.pixelColor(x, y);
      n += c.red() > 150 && c.blue() > 150 && c.green() < 100;
    }
  }
  return n;
}

QPushButton* ButtonCaptioned(QWidget& window, const QString& caption) {
  for (QPushButton* b : window.findChildren<QPushButton*>()) {
    if (b->text() == caption) return b;
  }
  return nullptr;
}

class MainWindowDrawingTest : public ::testing::Test {
 protected:
  MainWindowDrawingTest() {
    testing::TestApp();
    parvenna::testing::CopySupplied(dir.path(), {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf"});
    store::Database db = store::Database::Open(dir / "ParvennaPro.pvs");
    db.Execute("UPDATE tblSetting SET FirstRun = 0");
  }

  // Clicks the label at this drawing point in the first view; then lets the
  // views paint.
  void ClickLabel(MainWindow& window, drawing::Point at) {
    QApplication::processEvents();  // the windows take their places and sizes
    drawing::ViewForm& form = window.Shell().frmView;
    const CanvasPoint p = form.View(0).ToScreen(at);
    QTest::mouseClick(window.Drawing().View(0), Qt::LeftButton, {},
                      QPoint(static_cast<int>(p.x), static_cast<int>(p.y)));
    QApplication::processEvents();
  }

  int Marks(MainWindow& window) {
    window.Drawing().View(0)->repaint();
    return MarkedPixels(window.Drawing().View(0)->Frame());
  }

  parvenna::testing::TempDir dir;
  parvenna::testing::ScriptedPrompter prompter;
};

TEST_F(MainWindowDrawingTest, MarksGoWithTheUsedListOnCancelAndNew) {
  MainWindow window(dir.path().string(), &prompter);
  window.resize(1200, 900);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  ASSERT_TRUE(window.Start("\"" + (dir / "sample_feet.pvd").string() + "\""));
  editor::EditorForm& editor = window.Shell().frmEditor;
  // The middle of the label "N16%%D32'13"E", which runs up at 73.5 degrees.
  const drawing::DrawingDocument* doc = window.Shell().frmView.View(0).Document();
  ASSERT_NE(doc, nullptr);
  drawing::Point bearing;
  for (const drawing::TextData& t : doc->texts) {
    if (doc->RawText(t) != "N16%%D32'13\"E") continue;
    const auto corners = drawing::TextCorners(t);
    bearing = {(corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2};
  }
  // Near enough for the labels to be read.
  window.Shell().frmView.View(0).ShowWindow(5000, 5060, 5080, 5100);
  window.Shell().frmView.cmdRedraw_Click();

  for (const bool byCancel : {true, false}) {
    SCOPED_TRACE(byCancel ? "Cancel" : "a new parcel");
    window.Trigger("mnuInsertParcel");
    editor.SetFocus({editor::FocusKind::Field, 0, CourseField::BearingLine});
    window.RefreshAll();
    ClickLabel(window, bearing);
    ASSERT_EQ(editor.txtBearingLine[0].Text, "N16\u00B032'13\"E");

    EXPECT_GT(Marks(window), 20);
    if (byCancel) {
      QPushButton* cancel = ButtonCaptioned(window.Editor(), "&Cancel");
      ASSERT_NE(cancel, nullptr);
      QTest::mouseClick(cancel, Qt::LeftButton);
    } else {
      window.Trigger("mnuInsertParcel");
    }
    QApplication::processEvents();
    EXPECT_TRUE(editor.grab.usedEntities.empty());
    EXPECT_EQ(Marks(window), 0);
  }
  editor.ExitConfirmed = true;
}

}  // namespace
}  // namespace parvenna::ui
