// What each field of the rows does under the surveyor's hand.
#include "editor/change_batch.h"
#include "editor/editor_form.h"
#include "editor/messages.h"
#include "geometry/auto_inverse.h"
#include "geometry/bearing_text.h"

namespace parvenna::editor {
namespace {

bool IsBearingField(CourseField f) {
  return f == CourseField::BearingLine || f == CourseField::BearingArc;
}

const char* FieldName(CourseField f) {
  switch (f) {
    case CourseField::Arc: return "txtArc";
    case CourseField::Radius: return "txtRadius";
    case CourseField::Chord: return "txtChord";
    default: return "";
  }
}

constexpr char32_t kBackspace = 8;
constexpr char32_t kDegreeSign = 0x00B0;

}  // namespace

void EditorForm::Recalculate() {
  if (batchDepth_ > 0) {
    recalcPending_ = true;
    return;
  }
  CalculateAndDraw();
}

char32_t EditorForm::Field_KeyPress(int, CourseField field, char32_t key) const {
  const bool digit = key >= U'0' && key <= U'9';
  if (!IsBearingField(field)) {
    return digit || key == U'.' || key == kBackspace ? key : 0;
  }
  if (digit || key == U'\'' || key == U'"' || key == kBackspace) return key;
  if (key == U'D' || key == U'd') return kDegreeSign;
  if (!project.BearingMode) return 0;  // no letters in an azimuth
  switch (key) {
    case U'N': case U'S': case U'E': case U'W': return key;
    case U'n': case U's': case U'e': case U'w': return key - U'a' + U'A';
    default: return 0;
  }
}

void EditorForm::Field_Click(int, CourseField) { SetEditing(true); }

void EditorForm::Field_DblClick(int, CourseField) {
  SetEditing(true);
  grab.GrabActive = true;
  grab.GrabQueue.clear();
  if (project.MinimizeDuringGrab) host.MinimizeEditor();
}

void EditorForm::txtParcel_Click() { SetEditing(true); }

void EditorForm::txtParcel_DblClick() { Field_DblClick(0, CourseField::BearingLine); }

void EditorForm::Field_Change(int row, CourseField field) {
  if (!parcel.RecalcSuspended) Recalculate();
  if (IsBearingField(field)) return;  // a bearing never opens the next row
  // A distance opens the next row on every change; a curve field only from
  // the last place of the order. Filling a parcel opens rows the same way.
  const bool opens = field == CourseField::DistanceLine || ArcFieldPosition(FieldName(field)) == 4;
  if (opens && row < CourseLimit - 1) OpenRow(row + 1);
}

void EditorForm::Field_GotFocus(int row, CourseField field) {
  focus = {FocusKind::Field, row, field};
  int code = 1;
  if (field == CourseField::DistanceLine) code = 2;
  else if (!IsBearingField(field)) code = ArcFieldPosition(FieldName(field));
  Field(row, field).BackColor = colours::MarkColour;
  if (FocusRow != row + 1 || FocusField != code) UnmarkField(FocusRow, FocusField);
  FocusRow = row + 1;
  FocusField = code;
  CurrentRow = row;
  // Wherever the focus came from (a check, a grab, Tab), the next key must
  // not edit a course out of sight.
  if (!RowInView(row)) GotoFocusLine();
}

void EditorForm::Field_LostFocus(int row, CourseField field) {
  if (!IsBearingField(field)) return;
  std::string text = Field(row, field).Text;
  if (text.empty() || IsValidBearing(project.notation(), text)) return;
  Inform(prompter, messages::BearingNotFormatted);
  // The row button takes the focus and sends it back to the marked bearing.
  SetFocus({FocusKind::RowButton, row});
}

void EditorForm::txtParcel_GotFocus() {
  focus = {FocusKind::Parcel};
  txtParcel.BackColor = colours::MarkColour;
  if (FocusRow != 0) {
    UnmarkField(FocusRow, FocusField);
    FocusRow = 0;
  }
  CurrentRow = CourseLimit;
}

void EditorForm::txtParcel_LostFocus() { txtParcel.BackColor = colours::Window; }

void EditorForm::UnmarkField(int row, int field) {
  if (row == 0) {
    txtParcel.BackColor = colours::Window;
    return;
  }
  const int r = row - 1;
  if (r >= CourseLimit) return;
  if (frameLine[r].Visible) {
    (field == 1 ? txtBearingLine[r] : txtDistanceLine[r]).BackColor = colours::Window;
    return;
  }
  if (field == 1) {
    // Field 1 is read as the bearing even where a number stands in place 1.
    txtBearingArc[r].BackColor = colours::Window;
    return;
  }
  for (CourseField f : {CourseField::Arc, CourseField::Chord, CourseField::Radius}) {
    if (ArcFieldPosition(FieldName(f)) == field) {
      Field(r, f).BackColor = colours::Window;
      return;
    }
  }
}

void EditorForm::cmdNo_GotFocus(int row) {
  focus = {FocusKind::RowButton, row};
  cmdNo[row].BackColor = colours::Yellow;
  CurrentRow = row;
  // The way back to a bearing that was refused.
  if (txtBearingLine[row].BackColor == colours::MarkColour && frameLine[row].Visible) {
    SetFocus({FocusKind::Field, row, CourseField::BearingLine});
  } else if (txtBearingArc[row].BackColor == colours::MarkColour && frameArc[row].Visible) {
    SetFocus({FocusKind::Field, row, CourseField::BearingArc});
  }
}

void EditorForm::cmdNo_LostFocus(int row) { cmdNo[row].BackColor = colours::ButtonFace; }

void EditorForm::cmdNo_MouseUp(int row) {
  menus.mnuPopChangeLineCurve.Caption =
      frameLine[row].Visible ? messages::ChangeToCurve : messages::ChangeToLine;
  menus.mnuPopChangeLineCurve.Enabled = true;
  SetFocus({FocusKind::RowButton, row});
  host.ShowRowMenu(row);
}

void EditorForm::chksign_Toggle(int index) {
  // The box's own rule: ticked goes clear, anything else goes ticked.
  SetSign(index, chksign.at(index).Value == SignTicked ? SignClear : SignTicked);
}

void EditorForm::chksign_MouseUp(int index) {
  // The pair acts as one choice: a click always ticks the box clicked.
  const int other = index % 2 == 1 ? index - 1 : index + 1;
  SetSign(other, SignClear);
  SetSign(index, SignTicked);
}

void EditorForm::chksign_Click(int index) {
  SetEditing(true);
  cmdNo.at((index - index % 2) / 2).BackColor = colours::ButtonFace;
  Recalculate();
}

void EditorForm::cmdLineInvert_Click(int row) {
  if (!txtBearingLine[row].Text.empty()) {
    SetFieldText(row, CourseField::BearingLine,
                 ReverseBearing(project.notation(), txtBearingLine[row].Text));
  }
  parcel.NorthRestored = true;
  CalculateAndDraw();
}

void EditorForm::cmdArcInvert_Click(int row) {
  if (!txtBearingArc[row].Text.empty()) {
    SetFieldText(row, CourseField::BearingArc,
                 ReverseBearing(project.notation(), txtBearingArc[row].Text));
  }
  parcel.NorthRestored = true;
  CalculateAndDraw();
}

void EditorForm::FlipCurrentBearing() {
  if (CurrentRow >= CourseLimit) return;
  const CourseField field =
      frameLine[CurrentRow].Visible ? CourseField::BearingLine : CourseField::BearingArc;
  const std::string& text = Field(CurrentRow, field).Text;
  if (!text.empty()) SetFieldText(CurrentRow, field, ReverseBearing(project.notation(), text));
  CalculateAndDraw();
  SetFieldsEnabled(true);
  SetEditing(true);
  parcel.NorthRestored = true;
}

void EditorForm::cmdAutoInverse_Click() {
  ChangeBatch batch(*this);
  AutoInverse(*this, Settings(), parcel, prompter);
}

void EditorForm::mnuNorthing_Click() {
  ChangeBatch batch(*this);
  RestoreNorth(*this, Settings(), parcel);
}

}  // namespace parvenna::editor
