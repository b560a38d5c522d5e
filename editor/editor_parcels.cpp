// Parcels between the project file and the rows: listing, loading, storing,
// renaming, deleting. Each operation opens the file and closes it again; a
// write goes into the file whole, in one transaction, or not at all.
#include <optional>
#include <span>

#include "editor/change_batch.h"
#include "editor/editor_form.h"
#include "editor/messages.h"
#include "geometry/numbers.h"
#include "geometry/validation.h"
#include "store/messages.h"
#include "store/project_file.h"
#include "store/store.h"

namespace parvenna::editor {
namespace {

using store::Database;
using store::Recordset;
using store::Transaction;
using store::Value;

Database OpenProject(const store::ProjectState& project) {
  return Database::Open(project.ProjectFile);
}

std::string Id(long parcelId) { return std::to_string(parcelId); }

bool IsDuplicate(const RunError& e) { return e.Code() == store::errors::DuplicateKey; }

// A stored field as text. A column the file lacks and a Null read as the
// empty text, a number in general form, a text as it stands.
std::string StoredText(const Recordset& rs, std::string_view name) {
  return rs.HasField(name) ? rs.Get(name).AsText() : "";
}

// A stored whole number, or nothing when the column is missing, Null, or
// holds what is no number.
std::optional<long> StoredWhole(const Recordset& rs, std::string_view name) {
  if (!rs.HasField(name)) return std::nullopt;
  try {
    const Value value = rs.Get(name);
    if (value.IsNull()) return std::nullopt;
    return value.AsLong();
  } catch (const RunError&) {
    return std::nullopt;
  }
}

// A stored number as its field shows it, or the empty text (a field not
// keyed) when it is none that the field could hold and compute with.
std::string StoredNumber(const Recordset& rs, std::string_view name) {
  const std::string text = StoredText(rs, name);
  return ResumeNext([&] { ReadNumber(text); }) ? text : "";
}

// One stored course as the rows show it. RowType 1 is a line and any other
// number a curve; a type that does not read is told by the curve's own
// fields. A sign that does not read leaves both boxes grey.
Course StoredCourse(const Recordset& rs) {
  Course course;
  const std::string direction = StoredText(rs, "Direction");
  const std::string length = StoredNumber(rs, "Length");
  const std::string arc = StoredNumber(rs, "Arc");
  const std::string radius = StoredNumber(rs, "Radius");
  const std::optional<long> type = StoredWhole(rs, "RowType");
  const bool line = type ? *type == 1 : arc.empty() && radius.empty();
  if (line) {
    course.Kind = CourseKind::Line;
    course.BearingLine = direction;
    course.DistanceLine = length;
    return course;
  }
  course.Kind = CourseKind::Curve;
  course.BearingArc = direction;
  course.Arc = arc;
  course.Radius = radius;
  course.Chord = length;
  const long sign = StoredWhole(rs, "Plus").value_or(2);
  course.SignPlus = sign == 0 ? SignTicked : sign == 1 ? SignClear : SignGrey;
  course.SignMinus = sign == 0 ? SignClear : sign == 1 ? SignTicked : SignGrey;
  return course;
}

bool Converts(const std::string& text) {
  return ResumeNext([&] { TextToDouble(text); });
}

// The number fields of a row's face, under the names the surveyor knows.
struct NumberField {
  CourseField field;
  const char* name;
};
constexpr NumberField kLineNumbers[] = {{CourseField::DistanceLine, "distance"}};
constexpr NumberField kCurveNumbers[] = {
    {CourseField::Arc, "arc"}, {CourseField::Radius, "radius"}, {CourseField::Chord, "chord"}};

std::span<const NumberField> NumbersOf(bool line) {
  if (line) return kLineNumbers;
  return kCurveNumbers;
}

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
  try {
    Database db = OpenProject(project);
    Recordset rs = db.OpenRecordset("SELECT * FROM tblParcel ORDER BY Parcel");
    cbxParcel.List.clear();
    cbxParcel.ItemData.clear();
    cbxParcel.ListIndex = -1;
    cbxParcel.Text.clear();
    for (; !rs.Eof(); rs.MoveNext()) {
      cbxParcel.List.push_back(StoredText(rs, "Parcel"));
      // A key that does not read finds no courses: the parcel is listed and
      // says so when it is chosen.
      cbxParcel.ItemData.push_back(StoredWhole(rs, "ParcelID").value_or(-1));
    }
  } catch (const RunError& e) {
    Inform(prompter, store::messages::CantOpenProject + project.ProjectFile + " (" +
                         store::StoreFailureReason(e) + ")");
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

void EditorForm::FillRows(const std::vector<Course>& courses) {
  ClearGrid();
  int i = 0;
  for (; i < static_cast<int>(courses.size()) && i < CourseLimit; ++i) {
    const Course& course = courses[static_cast<std::size_t>(i)];
    cmdNo[i].Enabled = true;
    if (course.Kind == CourseKind::Curve) {
      ChangeLineCurve(i);
      frameLine[i].Visible = false;
      frameArc[i].Visible = true;
      frameLine[i].Enabled = frameArc[i].Enabled = true;
      SetFieldText(i, CourseField::BearingArc, course.BearingArc);
      SetFieldText(i, CourseField::Arc, course.Arc);
      SetFieldText(i, CourseField::Radius, course.Radius);
      SetFieldText(i, CourseField::Chord, course.Chord);
      SetSign(2 * i, course.SignPlus);
      SetSign(2 * i + 1, course.SignMinus);
    } else {
      frameLine[i].Visible = true;
      frameArc[i].Visible = false;
      frameLine[i].Enabled = frameArc[i].Enabled = true;
      SetFieldText(i, CourseField::BearingLine, course.BearingLine);
      SetFieldText(i, CourseField::DistanceLine, course.DistanceLine);
    }
  }
  // A filled parcel has one empty open row after its last course.
  if (i < CourseLimit) {
    cmdNo[i].Enabled = true;
    frameLine[i].Visible = true;
    frameLine[i].Enabled = true;
  }
}

void EditorForm::Show_Detail() {
  parcelOnShow_ = false;
  const int index = cbxParcel.ListIndex;
  // A parcel without courses takes the selection away; there is nothing to load.
  if (index < 0 || index >= cbxParcel.ListCount()) return;
  parcel.CalcEnabled = false;
  ParcelID = cbxParcel.ItemData[index];
  std::vector<Course> courses;
  std::string area, closure;
  try {
    Database db = OpenProject(project);
    Recordset rs = db.OpenRecordset("select * FROM tblMeasurements where ParcelID = " +
                                    Id(ParcelID) + " ORDER BY RowNo");
    for (; !rs.Eof(); rs.MoveNext()) courses.push_back(StoredCourse(rs));
    rs.Close();
    Recordset totals =
        db.OpenRecordset("select * FROM tblParcel where ParcelID = " + Id(ParcelID));
    if (!totals.Eof()) {
      area = StoredText(totals, "Area");
      closure = StoredText(totals, "Closure");
    }
  } catch (const RunError& e) {
    Inform(prompter, store::messages::CantOpenProject + project.ProjectFile + " (" +
                         store::StoreFailureReason(e) + ")");
    parcel.CalcEnabled = true;
    return;
  }
  if (courses.empty()) {
    Inform(prompter, messages::NoMatchingEntries);
    SetListIndex(-1);
    // The rows stay as they were; computing goes on for them.
    parcel.CalcEnabled = true;
    return;
  }
  if (courses.size() > static_cast<std::size_t>(CourseLimit)) {
    Inform(prompter, messages::TooManyCoursesStart + std::to_string(courses.size()) +
                         messages::TooManyCoursesEnd);
    parcel.CalcEnabled = true;
    return;
  }
  FillRows(courses);
  results.lblArea.Caption = area;
  results.lblClosure.Caption = closure;
  txtParcel.Text = cbxParcel.Text;
  parcelOnShow_ = true;
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

bool EditorForm::cmdSave_Click() {
  UnmarkField(FocusRow, FocusField);
  if (!project.ReadOnlyMessage.empty()) {
    Inform(prompter, project.ReadOnlyMessage);
    return false;
  }
  if (results.lblClosure.Caption.empty()) {
    Inform(prompter, messages::NoValidParcel, MsgIcon::Exclamation, "Parvenna");
    return false;
  }
  if (Val(results.lblClosure.Caption) > project.ClosureToleranceValue &&
      !AskYesNo(prompter, messages::FailedTolerance)) {
    return false;
  }
  // Rows that hold no parcel of the list are a new parcel, whatever way the
  // editing began: they never overwrite the parcel shown last.
  if (!InsertingParcel && !parcelOnShow_) StartParcelFromRowMenu();
  if (InsertingParcel) {
    if (!InsertParcel()) return false;
    Parcel_Bound();
    ClearGrid();
    parcel.NorthRestored = false;
    cmdInsert_Click();  // straight on to the next new parcel
    return true;
  }
  if (!UpdateParcel()) return false;
  SetFieldsEnabled(false);
  SetEditing(false);
  parcel.NorthRestored = false;
  return true;
}

namespace {

// One row of tblMeasurements from the face that shows. A new parcel's row
// may have a field of its face not keyed (its other face is full): the
// field is left out. Everything else must convert.
void SetCourseFields(Recordset& rs, const EditorForm& form, int i, bool leaveOutUnkeyed) {
  auto number = [&](const std::string& text) {
    return leaveOutUnkeyed && text.empty() ? Value() : Value(TextToDouble(text));
  };
  const bool line = form.frameLine[i].Visible;
  rs.Set("RowType", Value(line ? 1 : 0));
  if (line) {
    rs.Set("Length", number(form.txtDistanceLine[i].Text));
    rs.Set("Direction", Value(form.txtBearingLine[i].Text));
    return;
  }
  rs.Set("Length", number(form.txtChord[i].Text));
  rs.Set("Direction", Value(form.txtBearingArc[i].Text));
  rs.Set("Arc", number(form.txtArc[i].Text));
  rs.Set("Radius", number(form.txtRadius[i].Text));
  const int plus = form.chksign[2 * i].Value == SignTicked       ? 0
                   : form.chksign[2 * i + 1].Value == SignTicked ? 1
                                                                 : 2;
  rs.Set("Plus", Value(plus));
}

}  // namespace

bool EditorForm::RowIsBlank(int row) const {
  for (CourseField f : {CourseField::BearingLine, CourseField::DistanceLine,
                        CourseField::BearingArc, CourseField::Arc, CourseField::Radius,
                        CourseField::Chord}) {
    if (!Field(row, f).Text.empty()) return false;
  }
  return true;
}

int EditorForm::RowsWritten() const {
  // The open rows but the empty one past the end; row 49 when reached, unless
  // it is that empty row.
  int rows = 0;
  for (int i = 0; i < CourseLimit; ++i) {
    if (i < CourseLimit - 1 && !IsOpen(i + 1)) break;
    rows = i + 1;
  }
  if (rows == CourseLimit && RowIsBlank(CourseLimit - 1)) --rows;
  return rows;
}

bool EditorForm::CheckStorable(bool allOpenRows) {
  if (store::CharacterCount(PaddedName(txtParcel.Text)) >
      static_cast<std::size_t>(store::kParcelNameLimit)) {
    Inform(prompter, messages::NameTooLong);
    return false;
  }
  // A new parcel stores the rows with every field of a face keyed, wherever
  // they stand; a stored parcel is written again row by row up to the open
  // end, so there an empty number is a course that would be lost.
  const int last = allOpenRows ? RowsWritten() : CourseLimit;
  for (int i = 0; i < last; ++i) {
    const bool line = frameLine[i].Visible;
    if (!allOpenRows) {
      const bool lineFull = !txtBearingLine[i].Text.empty() && !txtDistanceLine[i].Text.empty();
      const bool curveFull = !txtBearingArc[i].Text.empty() && !txtChord[i].Text.empty() &&
                             !txtArc[i].Text.empty() && !txtRadius[i].Text.empty();
      if (!lineFull && !curveFull) continue;
    }
    const std::string course = messages::CourseStart + std::to_string(i + 1);
    bool blank = Field(i, line ? CourseField::BearingLine : CourseField::BearingArc).Text.empty();
    for (const NumberField& f : NumbersOf(line)) blank = blank && Field(i, f.field).Text.empty();
    if (blank && allOpenRows) {
      Inform(prompter, course + messages::CourseBlank);
      return false;
    }
    for (const NumberField& f : NumbersOf(line)) {
      const std::string& text = Field(i, f.field).Text;
      if (text.empty() && allOpenRows) {
        Inform(prompter, course + messages::CourseCannotSave + f.name + messages::FieldEmpty);
        return false;
      }
      if (!text.empty() && !Converts(text)) {
        Inform(prompter, course + messages::CourseCannotSave + f.name + " \"" + text + "\"" +
                             messages::FieldNoNumber);
        return false;
      }
    }
  }
  return true;
}

void EditorForm::ReportStoreFailure(const char* action, const RunError& failure) {
  Inform(prompter, messages::ParcelStart + txtParcel.Text + action + project.ProjectFile + ": " +
                       store::StoreFailureReason(failure) + messages::NothingChanged,
         MsgIcon::Exclamation);
}

bool EditorForm::InsertParcel() {
  if (!ValidateParcel() || !CheckStorable(false)) return false;
  long key = 0;
  try {
    Database db = OpenProject(project);
    Transaction transaction(db);
    Recordset parcels = db.OpenRecordset("tblParcel");
    parcels.AddNew();
    parcels.Set("Parcel", Value(PaddedName(txtParcel.Text)));
    parcels.Set("Area", Value(RoundHalfEven(parcel.Area, project.ErrDecimals)));
    parcels.Set("Closure", Value(RoundHalfEven(parcel.Closure, project.ErrDecimals)));
    parcels.Set("ClosureBearing", Value(parcel.ClosureBearing));
    parcels.Set("PrecisionRatio", Value(parcel.Precision));
    try {
      parcels.Update();
    } catch (const RunError& e) {
      if (!IsDuplicate(e)) throw;
      Inform(prompter, messages::LotStart + txtParcel.Text + messages::LotExistsInsert);
      return false;
    }
    parcels.Bookmark(parcels.LastModified());
    key = parcels.Get("ParcelID").AsLong();
    Recordset rows = db.OpenRecordset("tblMeasurements");
    for (int i = 0; i < CourseLimit; ++i) {
      auto full = [&](CourseField f) { return !Field(i, f).Text.empty(); };
      const bool lineFull = full(CourseField::BearingLine) && full(CourseField::DistanceLine);
      const bool curveFull = full(CourseField::BearingArc) && full(CourseField::Chord) &&
                             full(CourseField::Arc) && full(CourseField::Radius);
      if (!lineFull && !curveFull) continue;  // blank rows leave gaps in RowNo
      rows.AddNew();
      rows.Set("parcelID", Value(static_cast<std::int64_t>(key)));
      rows.Set("RowNo", Value(i));
      SetCourseFields(rows, *this, i, true);
      rows.Update();
    }
    transaction.Commit();
  } catch (const RunError& e) {
    ReportStoreFailure(messages::NotSavedTo, e);
    return false;
  }
  ParcelID = key;
  return true;
}

bool EditorForm::UpdateParcel() {
  if (!ValidateParcel() || !CheckStorable(true)) return false;
  const double precision = parcel.Perimeter == 0 ? 1 : parcel.Closure / parcel.Perimeter;
  const int decimals = project.ErrDecimals;
  const bool sameName = cbxParcel.Text == txtParcel.Text;
  const std::string padded = PaddedName(txtParcel.Text);
  // Under its own name the parcel is the one selected; a new name goes to the
  // record that was loaded, so the key stays.
  const long key = sameName ? cbxParcel.ItemData.at(cbxParcel.ListIndex) : ParcelID;
  try {
    Database db = OpenProject(project);
    Transaction transaction(db);
    Recordset rs = db.OpenRecordset("select * FROM tblParcel where ParcelID = " + Id(key));
    rs.Edit();
    rs.Set("Area", Value(RoundHalfEven(parcel.Area, decimals)));
    rs.Set("Closure", Value(RoundHalfEven(parcel.Closure, decimals)));
    rs.Set("ClosureBearing", Value(parcel.ClosureBearing));
    // The ratio is rounded to 6 places under a new name, and only then.
    rs.Set("PrecisionRatio", Value(sameName ? precision : RoundHalfEven(precision, 6)));
    if (!sameName) rs.Set("Parcel", Value(padded));
    try {
      rs.Update();
    } catch (const RunError& e) {
      if (sameName || !IsDuplicate(e)) throw;
      Inform(prompter, messages::LotStart + txtParcel.Text + messages::LotExistsRename);
      return false;
    }
    rs.Close();
    db.Execute("DELETE FROM tblMeasurements WHERE ParcelID = " + Id(key));
    WriteRows(db, key);
    transaction.Commit();
  } catch (const RunError& e) {
    ReportStoreFailure(messages::NotSavedTo, e);
    return false;
  }
  ParcelID = key;
  if (sameName) return true;

  Parcel_Bound();
  ClearGrid();
  int position = -1;
  for (int k = 0; k < cbxParcel.ListCount(); ++k) {
    if (cbxParcel.List[static_cast<std::size_t>(k)] == padded) {
      position = k;
      break;
    }
  }
  SetListIndex(position);
  Show_Detail();
  return true;
}

void EditorForm::WriteRows(Database& db, long parcelId) {
  Recordset rs = db.OpenRecordset("tblMeasurements");
  const int rows = RowsWritten();
  for (int i = 0; i < rows; ++i) {
    rs.AddNew();
    rs.Set("parcelID", Value(static_cast<std::int64_t>(parcelId)));
    rs.Set("RowNo", Value(i));
    SetCourseFields(rs, *this, i, false);
    rs.Update();
  }
}

bool EditorForm::Delete_Parcel() {
  if (!project.ReadOnlyMessage.empty()) {
    Inform(prompter, project.ReadOnlyMessage);
    return false;
  }
  if (!AskYesNo(prompter, messages::ConfirmDeleteParcel)) return false;
  const int k = cbxParcel.ListIndex;
  if (k > -1) {
    const long key = cbxParcel.ItemData.at(k);
    try {
      Database db = OpenProject(project);
      Transaction transaction(db);
      db.Execute("DELETE FROM tblMeasurements WHERE ParcelID = " + Id(key));
      db.Execute("DELETE FROM tblParcel WHERE ParcelID = " + Id(key));
      transaction.Commit();
    } catch (const RunError& e) {
      ReportStoreFailure(messages::NotDeletedFrom, e);
      return false;
    }
    ParcelID = key;
  }
  Parcel_Bound();
  ClearGrid();
  const int count = cbxParcel.ListCount();
  if (count > 0 && count > k) SetListIndex(k);
  else if (k > 0 && count > 0) SetListIndex(k - 1);
  SetEditing(false);
  return k > -1;
}

}  // namespace parvenna::editor
