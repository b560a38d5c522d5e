// Parcels between the project file and the rows: listing, loading, storing,
// renaming, deleting. Each operation opens the file and closes it again.
#include "editor/change_batch.h"
#include "editor/editor_form.h"
#include "editor/messages.h"
#include "geometry/numbers.h"
#include "geometry/validation.h"
#include "store/store.h"

namespace parvenna::editor {
namespace {

using store::Database;
using store::Recordset;
using store::Value;

Database OpenProject(const store::ProjectState& project) {
  return Database::Open(project.ProjectFile);
}

std::string Id(long parcelId) { return std::to_string(parcelId); }

bool IsDuplicate(const RunError& e) { return e.Code() == store::errors::DuplicateKey; }

}  // namespace

std::string EditorForm::PaddedName(const std::string& typed) {
  const std::size_t first = typed.find_first_not_of(' ');
  const std::string t = first == std::string::npos ? "" : typed.substr(first);
  const std::size_t length = store::CharacterCount(t);
  // Short names stand right-aligned in six, so that the list sorts them.
  if (length < 6) return std::string(6 - length, ' ') + t;
  return typed;
}

void EditorForm::Parcel_Bound() {
  if (project.ProjectFile.empty()) return;
  Database db = OpenProject(project);
  cbxParcel.List.clear();
  cbxParcel.ItemData.clear();
  cbxParcel.ListIndex = -1;
  cbxParcel.Text.clear();
  Recordset rs = db.OpenRecordset("SELECT * FROM tblParcel ORDER BY Parcel");
  for (; !rs.Eof(); rs.MoveNext()) {
    cbxParcel.List.push_back(rs.Get("Parcel").AsText());
    cbxParcel.ItemData.push_back(rs.Get("ParcelID").AsLong());
  }
}

void EditorForm::Show_Parcels() {
  if (project.ProjectFile.empty()) return;
  Parcel_Bound();
  ClearGrid();
  if (cbxParcel.ListCount() > 0) {
    SetListIndex(0);
    Show_Detail();
    SetEditing(false);
    SetFieldsEnabled(false);
  } else {
    SetEditing(false);
    SetFieldsEnabled(false);
    cmdEdit.Enabled = false;
  }
}

void EditorForm::cbxParcel_Click() {
  parcel.RecalcSuspended = true;
  Show_Detail();
  parcel.RecalcSuspended = false;
  CalculateAndDraw();
  SetEditing(false);
}

void EditorForm::cmdNext_Click() {
  if (cbxParcel.ListIndex < cbxParcel.ListCount() - 1) SetListIndex(cbxParcel.ListIndex + 1);
}

void EditorForm::cmdPrevious_Click() {
  if (cbxParcel.ListIndex > 0) SetListIndex(cbxParcel.ListIndex - 1);
}

void EditorForm::Show_Detail() {
  Database db = OpenProject(project);
  parcel.CalcEnabled = false;
  const int index = cbxParcel.ListIndex;
  if (index < 0 || index >= cbxParcel.ListCount()) {
    parcel.CalcEnabled = true;
    throw RunError(ErrorNumber::SubscriptOutOfRange, "No parcel is selected");
  }
  ParcelID = cbxParcel.ItemData[index];
  Recordset rs = db.OpenRecordset("select * FROM tblMeasurements where ParcelID = " +
                                  Id(ParcelID) + " ORDER BY RowNo");
  if (rs.Eof()) {
    Inform(prompter, messages::NoMatchingEntries);
    SetListIndex(-1);
    // The rows stay as they were; computing goes on for them.
    parcel.CalcEnabled = true;
    return;
  }
  rs.MoveLast();
  const long count = rs.RecordCount();
  if (count > CourseLimit) {
    Inform(prompter, messages::TooManyCoursesStart + std::to_string(count) +
                         messages::TooManyCoursesEnd);
    parcel.CalcEnabled = true;
    return;
  }
  ClearGrid();
  rs.MoveFirst();
  int i = 0;
  for (; !rs.Eof(); rs.MoveNext(), ++i) {
    cmdNo[i].Enabled = true;
    if (rs.Get("RowType").AsInteger() != 1) {
      ChangeLineCurve(i);
      frameLine[i].Visible = false;
      frameArc[i].Visible = true;
      frameLine[i].Enabled = frameArc[i].Enabled = true;
      SetFieldText(i, CourseField::BearingArc, rs.Get("Direction").AsText());
      SetFieldText(i, CourseField::Arc, rs.Get("Arc").AsText());
      SetFieldText(i, CourseField::Radius, rs.Get("Radius").AsText());
      SetFieldText(i, CourseField::Chord, rs.Get("Length").AsText());
      const Value plus = rs.Get("Plus");
      const int sign = plus.IsNull() ? 2 : plus.AsInteger();
      SetSign(2 * i, sign == 0 ? SignTicked : sign == 1 ? SignClear : SignGrey);
      SetSign(2 * i + 1, sign == 0 ? SignClear : sign == 1 ? SignTicked : SignGrey);
    } else {
      frameLine[i].Visible = true;
      frameArc[i].Visible = false;
      frameLine[i].Enabled = frameArc[i].Enabled = true;
      SetFieldText(i, CourseField::BearingLine, rs.Get("Direction").AsText());
      SetFieldText(i, CourseField::DistanceLine, rs.Get("Length").AsText());
    }
  }
  // A loaded parcel has one empty open row after its last course.
  if (i < CourseLimit) {
    cmdNo[i].Enabled = true;
    frameLine[i].Visible = true;
    frameLine[i].Enabled = true;
  }
  rs.Close();
  Recordset totals = db.OpenRecordset("select * FROM tblParcel where ParcelID = " + Id(ParcelID));
  if (!totals.Eof()) {
    results.lblArea.Caption = totals.Get("Area").AsText();
    results.lblClosure.Caption = totals.Get("Closure").AsText();
  }
  totals.Close();
  db.Close();
  txtParcel.Text = cbxParcel.Text;
  parcel.CalcEnabled = true;
  CalculateAndDraw();
}

bool EditorForm::ValidateParcel() {
  bool ok = true;
  if (txtParcel.Text.empty()) {
    Inform(prompter, messages::NoParcelName);
    ok = false;
  }
  return ValidateCourses(*this, Settings(), parcel, prompter) && ok;
}

void EditorForm::cmdSave_Click() {
  UnmarkField(FocusRow, FocusField);
  if (results.lblClosure.Caption.empty()) {
    Inform(prompter, messages::NoValidParcel, MsgIcon::Exclamation, "Parvenna");
    return;
  }
  if (Val(results.lblClosure.Caption) > project.ClosureToleranceValue &&
      !AskYesNo(prompter, messages::FailedTolerance)) {
    return;
  }
  if (InsertingParcel) {
    if (InsertParcel()) {
      Parcel_Bound();
      ClearGrid();
      parcel.NorthRestored = false;
      cmdInsert_Click();  // straight on to the next new parcel
    }
  } else if (UpdateParcel()) {
    SetFieldsEnabled(false);
    SetEditing(false);
    parcel.NorthRestored = false;
  }
}

namespace {

// One row of tblMeasurements from the face that shows. A number that will not
// convert fails its own statement only where the caller resumes; WriteRows
// lets it end the writing.
void SetCourseFields(Recordset& rs, const EditorForm& form, int i, bool resume) {
  auto statement = [&](auto&& s) {
    if (resume) ResumeNext(s);
    else s();
  };
  const bool line = form.frameLine[i].Visible;
  statement([&] { rs.Set("RowType", Value(line ? 1 : 0)); });
  if (line) {
    statement([&] { rs.Set("Length", Value(TextToDouble(form.txtDistanceLine[i].Text))); });
    statement([&] { rs.Set("Direction", Value(form.txtBearingLine[i].Text)); });
    return;
  }
  statement([&] { rs.Set("Length", Value(TextToDouble(form.txtChord[i].Text))); });
  statement([&] { rs.Set("Direction", Value(form.txtBearingArc[i].Text)); });
  statement([&] { rs.Set("Arc", Value(TextToDouble(form.txtArc[i].Text))); });
  statement([&] { rs.Set("Radius", Value(TextToDouble(form.txtRadius[i].Text))); });
  const int plus = form.chksign[2 * i].Value == SignTicked       ? 0
                   : form.chksign[2 * i + 1].Value == SignTicked ? 1
                                                                 : 2;
  statement([&] { rs.Set("Plus", Value(plus)); });
}

}  // namespace

bool EditorForm::InsertParcel() {
  if (!ValidateParcel()) return false;
  // From here each statement stands alone: a failure is passed over, and only
  // a duplicate name is looked for.
  Database db;
  Recordset parcels;
  ResumeNext([&] { db = OpenProject(project); });
  ResumeNext([&] { parcels = db.OpenRecordset("tblParcel"); });
  ResumeNext([&] { parcels.AddNew(); });
  ResumeNext([&] { parcels.Set("Parcel", Value(PaddedName(txtParcel.Text))); });
  ResumeNext([&] { parcels.Set("Area", Value(RoundHalfEven(parcel.Area, project.ErrDecimals))); });
  ResumeNext(
      [&] { parcels.Set("Closure", Value(RoundHalfEven(parcel.Closure, project.ErrDecimals))); });
  ResumeNext([&] { parcels.Set("ClosureBearing", Value(parcel.ClosureBearing)); });
  ResumeNext([&] { parcels.Set("PrecisionRatio", Value(parcel.Precision)); });
  try {
    parcels.Update();
  } catch (const RunError& e) {
    if (IsDuplicate(e)) {
      Inform(prompter, messages::LotStart + txtParcel.Text + messages::LotExistsInsert);
      return false;
    }
  }
  ResumeNext([&] {
    parcels.Bookmark(parcels.LastModified());
    ParcelID = parcels.Get("ParcelID").AsLong();
  });
  Recordset rows;
  ResumeNext([&] { rows = db.OpenRecordset("tblMeasurements"); });
  for (int i = 0; i < CourseLimit; ++i) {
    auto full = [&](CourseField f) { return !Field(i, f).Text.empty(); };
    const bool lineFull = full(CourseField::BearingLine) && full(CourseField::DistanceLine);
    const bool curveFull = full(CourseField::BearingArc) && full(CourseField::Chord) &&
                           full(CourseField::Arc) && full(CourseField::Radius);
    if (!lineFull && !curveFull) continue;  // blank rows leave gaps in RowNo
    ResumeNext([&] { rows.AddNew(); });
    ResumeNext([&] { rows.Set("parcelID", Value(static_cast<std::int64_t>(ParcelID))); });
    ResumeNext([&] { rows.Set("RowNo", Value(i)); });
    SetCourseFields(rows, *this, i, true);
    ResumeNext([&] { rows.Update(); });
  }
  return true;
}

bool EditorForm::UpdateParcel() {
  if (!ValidateParcel()) return false;
  const double precision = parcel.Perimeter == 0 ? 1 : parcel.Closure / parcel.Perimeter;
  Database db;
  ResumeNext([&] { db = OpenProject(project); });
  auto deleteRows = [&] {
    ResumeNext([&] { db.Execute("DELETE FROM tblMeasurements WHERE ParcelID = " + Id(ParcelID)); });
  };
  auto select = [&] {
    return db.OpenRecordset("select * FROM tblParcel where ParcelID = " + Id(ParcelID));
  };
  const int decimals = project.ErrDecimals;
  // The parcel's record in edit, with its totals written.
  auto editTotals = [&](double ratio) {
    Recordset rs;
    ResumeNext([&] { rs = select(); });
    ResumeNext([&] { rs.Edit(); });
    ResumeNext([&] { rs.Set("Area", Value(RoundHalfEven(parcel.Area, decimals))); });
    ResumeNext([&] { rs.Set("Closure", Value(RoundHalfEven(parcel.Closure, decimals))); });
    ResumeNext([&] { rs.Set("ClosureBearing", Value(parcel.ClosureBearing)); });
    ResumeNext([&] { rs.Set("PrecisionRatio", Value(ratio)); });
    return rs;
  };

  if (cbxParcel.Text == txtParcel.Text) {
    ResumeNext([&] { ParcelID = cbxParcel.ItemData.at(cbxParcel.ListIndex); });
    Recordset rs = editTotals(precision);
    ResumeNext([&] { rs.Update(); });
    ResumeNext([&] { rs.Close(); });
    deleteRows();
    ResumeNext([&] { WriteRows(); });
    return true;
  }

  // A new name: the same record takes it, so the key stays.
  const std::string padded = PaddedName(txtParcel.Text);
  // The ratio is rounded to 6 places here, and only here.
  Recordset rs = editTotals(RoundHalfEven(precision, 6));
  ResumeNext([&] { rs.Set("Parcel", Value(padded)); });
  try {
    rs.Update();
  } catch (const RunError& e) {
    if (IsDuplicate(e)) {
      Inform(prompter, messages::LotStart + txtParcel.Text + messages::LotExistsRename);
      return false;
    }
  }
  ResumeNext([&] { rs.Close(); });
  deleteRows();
  ResumeNext([&] { WriteRows(); });
  ResumeNext([&] { Parcel_Bound(); });
  ResumeNext([&] { ClearGrid(); });
  int position = -1;
  ResumeNext([&] {
    Recordset all = db.OpenRecordset("SELECT * FROM tblParcel ORDER BY Parcel");
    for (int k = 0; !all.Eof(); all.MoveNext(), ++k) {
      if (all.Get("Parcel").AsText() == padded) {
        position = k;
        break;
      }
    }
  });
  ResumeNext([&] { SetListIndex(position); });
  ResumeNext([&] { Show_Detail(); });
  return true;
}

void EditorForm::WriteRows() {
  Database db = OpenProject(project);
  Recordset rs = db.OpenRecordset("tblMeasurements");
  for (int i = 0; i < CourseLimit; ++i) {
    // The empty open row past the end is not written; row 49 always is.
    if (i < CourseLimit - 1 && !frameLine[i + 1].Enabled && !frameArc[i + 1].Enabled) break;
    rs.AddNew();
    rs.Set("parcelID", Value(static_cast<std::int64_t>(ParcelID)));
    rs.Set("RowNo", Value(i));
    SetCourseFields(rs, *this, i, false);
    rs.Update();
  }
}

void EditorForm::Delete_Parcel() {
  if (!AskYesNo(prompter, messages::ConfirmDeleteParcel)) return;
  Database db = OpenProject(project);
  const int k = cbxParcel.ListIndex;
  if (k > -1) {
    ParcelID = cbxParcel.ItemData.at(k);
    db.Execute("DELETE FROM tblMeasurements WHERE ParcelID = " + Id(ParcelID));
    db.Execute("DELETE FROM tblParcel WHERE ParcelID = " + Id(ParcelID));
  }
  Parcel_Bound();
  ClearGrid();
  const int count = cbxParcel.ListCount();
  if (count > 0 && count > k) SetListIndex(k);
  else if (k > 0 && count > 0) SetListIndex(k - 1);
  SetEditing(false);
}

}  // namespace parvenna::editor
