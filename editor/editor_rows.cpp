// The rows of the editor: building, layout, scrolling, faces, and the moves
// of insertion and deletion.
#include <algorithm>
#include <cmath>

#include "editor/change_batch.h"
#include "editor/editor_form.h"
#include "editor/messages.h"
#include "platform/run_error.h"

namespace parvenna::editor {
namespace {

constexpr CourseField kTextFields[] = {CourseField::BearingLine, CourseField::DistanceLine,
                                       CourseField::BearingArc,  CourseField::Radius,
                                       CourseField::Chord,       CourseField::Arc};

}  // namespace

void EditorForm::Form_Load() {
  ExitConfirmed = false;
  picParcel.Left = SketchNormalLeft;
  picParcel.Top = 0;
  picParcel.Width = NormalPictureWidth;
  picParcel.Height = NormalPictureHeight;
  picture.SetSize(picParcel.Width, picParcel.Height);
  // The sketch stands above the rows, which take the rest of the form.
  frameBase.Height = Height - picParcel.Height;
  VScroll1.Height = frameBase.Height;
  VScroll1.Max = 32000;
  VScroll1.SmallChange = 32000 / CourseLimit;
  VScroll1.LargeChange = static_cast<int>(std::nearbyint(32000.0 / CourseLimit * 2));

  for (int i = 0; i < CourseLimit; ++i) {
    cmdNo[i].Caption = std::to_string(i + 1);
    cmdNo[i].ToolTipText = messages::RowMenuTip;
    frameLine[i].Height = LineHeight;
    frameArc[i].Height = CurveHeight;
    frameArc[i].Visible = false;
    cmdLineInvert[i].Caption = cmdArcInvert[i].Caption = messages::InvertCaption;
    cmdLineInvert[i].ToolTipText = cmdArcInvert[i].ToolTipText = messages::InvertTip;
    chksign[2 * i].Caption = "+";
    chksign[2 * i].ToolTipText = messages::AddAreaTip;
    chksign[2 * i + 1].Caption = "-";
    chksign[2 * i + 1].ToolTipText = messages::SubtractAreaTip;
    results.lblLineNo[i].Caption = std::to_string(i + 1);
    results.lblLineNo[i].Visible = false;
  }
  cbxParcel.ToolTipText = messages::ParcelListTip;
  lblBearing.Caption = messages::BearingCaption;
  VScroll1_Change(VScroll1.Value);
  ResetEditor();
  SetTabOrder();
}

void EditorForm::Form_Resize(double innerHeight) {
  Height = innerHeight < MinimumHeight ? MinimumHeight : innerHeight;
  frameBase.Height = Height - picParcel.Height;
  VScroll1.Height = frameBase.Height;
}

void EditorForm::OpenRow(int row) {
  if (row >= CourseLimit) return;
  frameArc[row].Enabled = true;
  frameLine[row].Enabled = true;
  cmdNo[row].Enabled = true;
}

// ---- Scrolling -------------------------------------------------------------------

void EditorForm::SetScrollValue(int value) {
  if (VScroll1.Value == value) return;
  VScroll1.Value = value;
  VScroll1_Change(value);
}

void EditorForm::VScroll1_Change(int value) {
  VScroll1.Value = value;
  double c = 0;
  for (int i = 0; i < CourseLimit; ++i) {
    const double top = std::nearbyint((c / K - value) * K);
    frameLine[i].Top = frameArc[i].Top = top;
    cmdNo[i].Top = top + 100;
    c += RowHeight(i);
  }
}

void EditorForm::VScroll1_GotFocus() {
  // While the bar has the focus its range covers the rows in use only.
  parcel.LastCourse = LastOpenRow();
  VScroll1.Max = RowsInUseMax();
}

int EditorForm::LastOpenRow() const {
  int last = 0;
  while (last + 1 < CourseLimit && IsOpen(last + 1)) ++last;
  return last;
}

int EditorForm::RowsInUseMax() const {
  double c = 0;
  for (int i = 0, last = LastOpenRow(); i <= last; ++i) c += RowHeight(i);
  if (c / 800 + 1 > CourseLimit) return 32000;
  return c >= 800 ? static_cast<int>(std::floor((c - 800) * 40 / CourseLimit)) : CourseLimit;
}

void EditorForm::VScroll1_LostFocus() { VScroll1.Max = 32000; }

void EditorForm::VScroll1_Wheel(int steps) {
  // The wheel goes no further down than the bar itself would, and a view
  // already further down (a focus moved there) is not pulled back by it.
  const int value = VScroll1.Value + steps * VScroll1.SmallChange;
  const int bottom = std::max(RowsInUseMax(), VScroll1.Value);
  SetScrollValue(std::clamp(value, 0, bottom));
}

bool EditorForm::RowInView(int row) const {
  const double top = frameLine.at(row).Top;
  return top >= 0 && top + RowHeight(row) <= frameBase.Height;
}

void EditorForm::GotoFocusLine() {
  int last = 0;
  if (FocusRow > 1) {
    for (int i = 0; i < FocusRow && i < CourseLimit; ++i) {
      if (!IsOpen(i)) break;
      last = i;
    }
  }
  double c = 0;
  for (int i = 0; i <= last; ++i) c += RowHeight(i);
  if (c < 1600) c = 1600;
  if ((c - 1600) / 800 <= CourseLimit) {
    SetScrollValue(static_cast<int>(std::floor((c - 1600) * 40 / CourseLimit)));
  } else {
    SetScrollValue(VScroll1.Max);
  }
}

// ---- The curve fields' order ---------------------------------------------------------

void EditorForm::LayoutArcFields() {
  const store::ArcFieldOrder& order = project.ArcOrder;
  struct Placed {
    const char* name;
    int place;
    std::array<TextBox, CourseLimit>* box;
    std::array<Label, CourseLimit>* label;
  };
  const Placed fields[] = {{"txtArc", order.Arc, &txtArc, &lblA},
                           {"txtRadius", order.Radius, &txtRadius, &lblR},
                           {"txtChord", order.Chord, &txtChord, &lblC},
                           {"txtBearing", order.Bearing, nullptr, nullptr}};
  for (const Placed& f : fields) {
    if (f.place < 1 || f.place > 4) {
      throw RunError(ErrorNumber::SubscriptOutOfRange,
                     std::string("The place of ") + f.name + " is out of range");
    }
    ArcFieldOrder[f.place] = f.name;
    if (!f.box) continue;  // the bearing field keeps its place on the row
    TextBox& box = (*f.box)[0];
    Label& label = (*f.label)[0];
    if (f.place <= 3) {
      box.Top = label.Top = 120;
      box.Left = (f.place - 1) * 1800 + 360;
      label.Left = (f.place - 1) * 1800 + 120;
    } else {
      box.Top = label.Top = 460;
      box.Left = 360;
      label.Left = 120;
    }
  }
  for (int i = 1; i < CourseLimit; ++i) {
    for (const Placed& f : fields) {
      if (!f.box) continue;
      (*f.box)[i].Top = (*f.box)[0].Top;
      (*f.box)[i].Left = (*f.box)[0].Left;
      (*f.label)[i].Top = (*f.label)[0].Top;
      (*f.label)[i].Left = (*f.label)[0].Left;
    }
  }
}

int EditorForm::ArcFieldPosition(const std::string& name) const {
  for (int place = 1; place <= 4; ++place) {
    if (ArcFieldOrder[place] == name) return place;
  }
  return 0;
}

CourseField EditorForm::ArcFieldAt(int place) const {
  const std::string& name = ArcFieldOrder.at(place);
  if (name == "txtArc") return CourseField::Arc;
  if (name == "txtRadius") return CourseField::Radius;
  if (name == "txtChord") return CourseField::Chord;
  return CourseField::BearingArc;
}

void EditorForm::SetTabOrder() {
  // Each row block is put right after frameBase, so the row buttons come first
  // in ascending order, then frameBase, then the field blocks in descending
  // row order. That is the sequence the form has always had.
  int index = 0;
  for (int i = 0; i < CourseLimit; ++i) cmdNo[i].TabIndex = index++;
  const int frameBaseIndex = index++;
  (void)frameBaseIndex;
  for (int i = CourseLimit - 1; i >= 0; --i) {
    txtBearingLine[i].TabIndex = index++;
    txtDistanceLine[i].TabIndex = index++;
    cmdLineInvert[i].TabIndex = index++;
    txtBearingArc[i].TabIndex = index++;
    for (int place = 2; place <= 4; ++place) {
      const CourseField f = ArcFieldAt(place);
      if (f != CourseField::BearingArc) Field(i, f).TabIndex = index++;
    }
    chksign[2 * i].TabIndex = index++;
    chksign[2 * i + 1].TabIndex = index++;
    cmdArcInvert[i].TabIndex = index++;
  }
  // A curve field in place 1 takes no place of its own in the sequence.
  if (ArcFieldAt(1) != CourseField::BearingArc) {
    for (int i = 0; i < CourseLimit; ++i) Field(i, ArcFieldAt(1)).TabIndex = index++;
  }
}

// ---- Faces ------------------------------------------------------------------------

void EditorForm::ChangeLineCurve(int row) {
  double delta = 0;
  const CourseField second = ArcFieldAt(2);
  if (frameLine[row].Visible) {
    frameLine[row].Visible = false;
    frameArc[row].Visible = true;
    SetFieldText(row, CourseField::BearingArc, txtBearingLine[row].Text);
    if (second != CourseField::BearingArc) SetFieldText(row, second, txtDistanceLine[row].Text);
    delta = LineHeight;
  } else {
    frameLine[row].Visible = true;
    frameArc[row].Visible = false;
    SetFieldText(row, CourseField::BearingLine, txtBearingArc[row].Text);
    if (second != CourseField::BearingArc) {
      SetFieldText(row, CourseField::DistanceLine, Field(row, second).Text);
    }
    delta = -LineHeight;
  }
  ShiftRowsBelow(delta, row);
}

void EditorForm::ShiftRowsBelow(double delta, int row) {
  for (int i = row + 1; i < CourseLimit; ++i) {
    frameLine[i].Top += delta;
    frameArc[i].Top += delta;
    cmdNo[i].Top += delta;
  }
}

void EditorForm::mnuChangeLineCurve_Click() {
  if (CurrentRow >= CourseLimit) return;
  ChangeLineCurve(CurrentRow);
  CalculateAndDraw();
  SetEditing(true);
}

void EditorForm::mnuPopChangeLineCurve_Click() {
  StartParcelFromRowMenu();
  mnuChangeLineCurve_Click();
  SetFieldsEnabled(true);
}

// ---- Insertion and deletion -----------------------------------------------------------

void EditorForm::CopyRow(int to, int from, double delta, bool withColours) {
  frameLine[to].Top = frameLine[from].Top + delta;
  frameLine[to].Enabled = frameLine[from].Enabled;
  frameLine[to].Visible = frameLine[from].Visible;
  frameArc[to].Top = frameArc[from].Top + delta;
  frameArc[to].Enabled = frameArc[from].Enabled;
  frameArc[to].Visible = frameArc[from].Visible;
  cmdNo[to].Top = cmdNo[from].Top + delta;
  cmdNo[to].Enabled = cmdNo[from].Enabled;
  for (CourseField f : kTextFields) SetFieldText(to, f, Field(from, f).Text);
  SetSign(2 * to, chksign[2 * from].Value);
  SetSign(2 * to + 1, chksign[2 * from + 1].Value);
  if (withColours) {
    for (CourseField f : kTextFields) Field(to, f).BackColor = Field(from, f).BackColor;
  }
}

namespace {
void CheckRow(int row) {
  if (row < 0 || row >= CourseLimit) {
    throw RunError(ErrorNumber::SubscriptOutOfRange, "No course row " + std::to_string(row));
  }
}
}  // namespace

bool EditorForm::Insert_Proc(int row) {
  CheckRow(row);
  // Every insertion moves the last row off the grid; a course there is asked for.
  if (!RowIsBlank(CourseLimit - 1) &&
      !AskYesNo(prompter, messages::DropLastCourse, MsgIcon::Question, kDefaultTitle, 2)) {
    return false;
  }
  ChangeBatch batch(*this);
  const double h = frameLine[row].Visible ? frameLine[row].Height : frameArc[row].Height;
  // The course in the last row falls off the end.
  for (int i = CourseLimit - 1; i >= row + 1; --i) CopyRow(i, i - 1, h, false);
  ClearRow(row);
  return true;
}

void EditorForm::Delete_Proc(int row) {
  CheckRow(row);
  ChangeBatch batch(*this);
  const double h = frameLine[row].Visible ? frameLine[row].Height : frameArc[row].Height;
  for (int i = row; i <= CourseLimit - 2; ++i) CopyRow(i, i + 1, -h, true);
  ClearRow(CourseLimit - 1);
  if (FocusRow - 1 > row && FocusRow > 1) {
    --FocusRow;
    const int r = FocusRow - 1;
    CourseField field;
    if (frameLine[r].Visible) {
      field = FocusField == 1 ? CourseField::BearingLine : CourseField::DistanceLine;
    } else {
      field = ArcFieldAt(FocusField);
    }
    SetFocus({FocusKind::Field, r, field});
  }
  const int last = CourseLimit - 1;
  frameLine[last].Enabled = frameArc[last].Enabled = cmdNo[last].Enabled = false;
  for (CourseField f : kTextFields) Field(last, f).BackColor = colours::Window;
}

void EditorForm::ClearRow(int row) {
  for (CourseField f : kTextFields) SetFieldText(row, f, "");
  SetSign(2 * row, SignGrey);
  SetSign(2 * row + 1, SignGrey);
  if (frameArc[row].Visible) ChangeLineCurve(row);
  for (CourseField f : kTextFields) Field(row, f).BackColor = colours::Window;
}

void EditorForm::mnuInsertBefore_Click() {
  if (CurrentRow >= CourseLimit) return;
  if (!Insert_Proc(CurrentRow)) return;
  SetEditing(true);
}

void EditorForm::mnuPopInsertBefore_Click() {
  StartParcelFromRowMenu();
  if (!Insert_Proc(CurrentRow)) return;
  SetFieldsEnabled(true);
  SetEditing(true);
}

void EditorForm::mnuInsertAfter_Click() {
  if (CurrentRow == CourseLimit - 1) {
    Inform(prompter, messages::MaximumCoursesStart + std::to_string(CourseLimit) + ".");
  } else if (CurrentRow < CourseLimit - 1) {
    SetEditing(true);
    Insert_Proc(CurrentRow + 1);
  }
}

void EditorForm::mnuPopInsertAfter_Click() {
  if (CurrentRow == CourseLimit - 1) {
    Inform(prompter, messages::MaximumCoursesStart + std::to_string(CourseLimit) + ".");
  } else if (CurrentRow < CourseLimit - 1) {
    StartParcelFromRowMenu();
    SetEditing(true);
    if (!Insert_Proc(CurrentRow + 1)) return;
    SetFieldsEnabled(true);
    SetEditing(true);
  }
}

void EditorForm::mnuDeleteCourse_Click() {
  if (CurrentRow >= CourseLimit) return;
  SetEditing(true);
  Delete_Proc(CurrentRow);
}

void EditorForm::mnuPopDelete_Click() {
  StartParcelFromRowMenu();
  Delete_Proc(CurrentRow);
  SetFieldsEnabled(true);
  SetEditing(true);
}

bool EditorForm::RowCommandsEnabled() const {
  return cmdSave.Enabled && CurrentRow < CourseLimit && IsOpen(CurrentRow);
}

}  // namespace parvenna::editor
