#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "editor/editor_form.h"
#include "store/project_file.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::editor::testing {

using parvenna::testing::RecordingCanvas;
using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;

inline const std::string Deg = "\u00B0";

class RecordingHost : public EditorHost {
 public:
  int drawingShown = 0;
  int minimised = 0;
  std::vector<int> rowMenus;
  void BringUpDrawing() override { ++drawingShown; }
  void MinimizeEditor() override { ++minimised; }
  void ShowRowMenu(int row) override { rowMenus.push_back(row); }
};

// An editor on a fresh, empty project file in a temporary directory.
class EditorTest : public ::testing::Test {
 protected:
  EditorTest() {
    project.ProjectFile = (dir / "test.pvd").string();
    store::Database db = store::Database::Create(project.ProjectFile);
    db.Append(store::ProjectSettingTable());
    db.Append(store::ParcelTable());
    db.Append(store::ParcelIndex());
    db.Append(store::MeasurementTable());
    db.Close();
    // Curves keyed bearing, arc, radius, chord: the chord's change opens the next row.
    project.ArcOrder = {2, 4, 3, 1};
    form = std::make_unique<EditorForm>(project, prompter, canvas, host);
    form->EnableEditorFrames(true);
  }

  EditorForm& f() { return *form; }

  // Keys a text into a field one character at a time, as the surveyor does.
  void Type(int row, CourseField field, const std::string& text) {
    f().SetFocus({FocusKind::Field, row, field});
    std::string typed;
    for (std::size_t i = 0; i < text.size(); ++i) {
      typed += text[i];
      // The degree mark is two bytes; it arrives as one keystroke.
      if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0xC0) typed += text[++i];
      f().SetFieldText(row, field, typed);
    }
  }

  void TypeLine(int row, const std::string& bearing, const std::string& distance) {
    Type(row, CourseField::BearingLine, bearing);
    Type(row, CourseField::DistanceLine, distance);
  }

  // Turns a row into a curve and keys its four fields; the sign by the mouse.
  void TypeCurve(int row, const std::string& bearing, const std::string& arc,
                 const std::string& radius, const std::string& chord, SignBox sign) {
    if (f().Kind(row) == CourseKind::Line) {
      f().CurrentRow = row;
      f().ChangeLineCurve(row);
    }
    Type(row, CourseField::BearingArc, bearing);
    Type(row, CourseField::Arc, arc);
    Type(row, CourseField::Radius, radius);
    Type(row, CourseField::Chord, chord);
    const int index = 2 * row + (sign == SignBox::Minus ? 1 : 0);
    f().chksign_Toggle(index);
    f().chksign_MouseUp(index);
  }

  // A new parcel keyed and stored: a square of the given side.
  void StoreSquare(const std::string& name, const std::string& side) {
    f().cmdInsert_Click();
    f().txtParcel.Text = name;
    TypeLine(0, "N0" + Deg + "0'0\"E", side);
    TypeLine(1, "N90" + Deg + "0'0\"E", side);
    TypeLine(2, "S0" + Deg + "0'0\"W", side);
    TypeLine(3, "N90" + Deg + "0'0\"W", side);
    f().cmdSave_Click();
  }

  std::vector<std::string> StoredNames() {
    std::vector<std::string> names;
    store::Database db = store::Database::Open(project.ProjectFile);
    for (store::Recordset rs = db.OpenRecordset("SELECT * FROM tblParcel ORDER BY Parcel");
         !rs.Eof(); rs.MoveNext()) {
      names.push_back(rs.Get("Parcel").AsText());
    }
    return names;
  }

  long StoredRows(const std::string& where = "") {
    store::Database db = store::Database::Open(project.ProjectFile);
    store::Recordset rs = db.OpenRecordset("SELECT * FROM tblMeasurements" + where);
    return rs.RecordCount();
  }

  TempDir dir;
  store::ProjectState project;
  ScriptedPrompter prompter;
  RecordingCanvas canvas{4995, 4995};
  RecordingHost host;
  std::unique_ptr<EditorForm> form;
};

}  // namespace parvenna::editor::testing
