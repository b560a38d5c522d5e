#include "editor/editor_form.h"

#include "editor/messages.h"
#include "editor/readable_courses.h"
#include "geometry/bearing_text.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna::editor {

EditorForm::EditorForm(store::ProjectState& projectState, Prompter& prompterPort, Canvas& pic,
                       EditorHost& editorHost)
    : project(projectState), prompter(prompterPort), picture(pic), host(editorHost) {
  Form_Load();
}

// ---- Setters that raise the form's events -------------------------------------

TextBox& EditorForm::Field(int row, CourseField field) {
  switch (field) {
    case CourseField::BearingLine: return txtBearingLine.at(row);
    case CourseField::DistanceLine: return txtDistanceLine.at(row);
    case CourseField::BearingArc: return txtBearingArc.at(row);
    case CourseField::Arc: return txtArc.at(row);
    case CourseField::Radius: return txtRadius.at(row);
    case CourseField::Chord: return txtChord.at(row);
  }
  return txtBearingLine.at(row);
}

const TextBox& EditorForm::Field(int row, CourseField field) const {
  return const_cast<EditorForm*>(this)->Field(row, field);
}

void EditorForm::SetFieldText(int row, CourseField field, const std::string& text) {
  TextBox& box = Field(row, field);
  if (box.Text == text) return;  // an unchanged text raises no Change
  box.Text = text;
  Field_Change(row, field);
}

void EditorForm::SetSign(int index, int value) {
  CheckBox& box = chksign.at(index);
  if (box.Value == value) return;
  box.Value = value;
  chksign_Click(index);
}

void EditorForm::SetListIndex(int index) {
  if (cbxParcel.ListIndex == index) return;
  cbxParcel.ListIndex = index;
  cbxParcel.Text = index >= 0 && index < cbxParcel.ListCount() ? cbxParcel.List[index] : "";
  if (index >= 0) cbxParcel_Click();
}

void EditorForm::SetFocus(FocusTarget target) {
  if (focus == target) return;
  const FocusTarget old = focus;
  // In transit: a LostFocus handler that sends the focus elsewhere wins.
  focus = {FocusKind::Other};
  switch (old.kind) {
    case FocusKind::Field: Field_LostFocus(old.row, old.field); break;
    case FocusKind::Parcel: txtParcel_LostFocus(); break;
    case FocusKind::RowButton: cmdNo_LostFocus(old.row); break;
    case FocusKind::ScrollBar: VScroll1_LostFocus(); break;
    default: break;
  }
  if (focus.kind != FocusKind::Other) return;
  focus = target;
  switch (target.kind) {
    case FocusKind::Field: Field_GotFocus(target.row, target.field); break;
    case FocusKind::Parcel: txtParcel_GotFocus(); break;
    case FocusKind::RowButton: cmdNo_GotFocus(target.row); break;
    case FocusKind::ScrollBar: VScroll1_GotFocus(); break;
    default: break;
  }
}

// ---- Course grid port ----------------------------------------------------------

CourseKind EditorForm::Kind(int row) const {
  // The face that shows is the kind; a row whose line face is hidden is a curve.
  return frameLine.at(row).Visible ? CourseKind::Line : CourseKind::Curve;
}

const std::string& EditorForm::Text(int row, CourseField field) const {
  return Field(row, field).Text;
}

int EditorForm::Sign(int row, SignBox box) const {
  return chksign.at(2 * row + (box == SignBox::Minus ? 1 : 0)).Value;
}

void EditorForm::WriteBearing(int row, CourseField field, const std::string& text) {
  SetFieldText(row, field, text);
}

void EditorForm::MarkField(int row, CourseField field, Rgb colour) {
  Field(row, field).BackColor = colour;
}

void EditorForm::MarkRowButton(int row, Rgb colour) { cmdNo.at(row).BackColor = colour; }

void EditorForm::MoveFocus(int row, CourseField field) {
  SetFocus({FocusKind::Field, row, field});
}

// ---- States --------------------------------------------------------------------

void EditorForm::ClearGrid() {
  grab.ParcelChanged();  // the labels of the last parcel may be grabbed again
  parcelOnShow_ = false;
  LayoutArcFields();
  txtParcel.Text.clear();
  for (int i = 0; i < CourseLimit; ++i) {
    for (CourseField f : {CourseField::BearingLine, CourseField::DistanceLine,
                          CourseField::BearingArc, CourseField::Arc, CourseField::Radius,
                          CourseField::Chord}) {
      SetFieldText(i, f, "");
    }
    // Add clear and subtract grey: a cleared grid, unlike a cleared row.
    SetSign(2 * i, SignClear);
    SetSign(2 * i + 1, SignGrey);
  }
  for (int i = 0; i < CourseLimit; ++i) {
    frameArc[i].Visible = false;
    frameLine[i].Visible = true;
    cmdNo[i].BackColor = colours::ButtonFace;
    frameLine[i].Top = frameArc[i].Top = i * LineHeight;
    cmdNo[i].Top = i * LineHeight + 100;
  }
  for (int i = 1; i < CourseLimit; ++i) {
    frameArc[i].Enabled = frameLine[i].Enabled = cmdNo[i].Enabled = false;
  }
  results.lblArea.Caption.clear();
  results.lblClosure.Caption.clear();
  results.lblDirection.Caption.clear();
  results.lblPrecision.Caption.clear();
  CurrentRow = CourseLimit;
  if (txtParcel.Enabled) SetFocus({FocusKind::Parcel});
}

void EditorForm::ResetEditor() {
  ClearGrid();
  cbxParcel.ListIndex = -1;
  cbxParcel.Text.clear();
  SetEditing(false);
  SetFieldsEnabled(false);
  cmdDelete.Enabled = menus.mnuDeleteParcel.Enabled = false;
  cmdEdit.Enabled = menus.mnuEditMode.Enabled = menus.mnuPopEdit.Enabled = false;
  InsertingParcel = false;
  parcel.NorthRestored = false;
}

void EditorForm::SetEditing(bool flag) {
  // Edit changes the parcel on show: with none on show there is nothing to
  // change, and a save would write into a parcel that is not there.
  cmdEdit.Enabled = menus.mnuEditMode.Enabled = menus.mnuPopEdit.Enabled = !flag && parcelOnShow_;
  cmdSave.Enabled = menus.mnuSaveParcel.Enabled = flag;
  cmdCancel.Enabled = menus.mnuCancelParcel.Enabled = flag;
  cmdInsert.Enabled = menus.mnuInsertParcel.Enabled = !flag;
  cmdDelete.Enabled = menus.mnuDeleteParcel.Enabled = !InsertingParcel;
  cbxParcel.Enabled = !flag;
  cbxParcel.BackColor = cbxParcel.Enabled ? colours::Window : colours::Menu;
  cmdPrevious.Enabled = cmdNext.Enabled = !flag;
}

void EditorForm::SetFieldsEnabled(bool flag) {
  // A name box that loses its Enabled loses the focus too, and with it its mark.
  if (!flag && focus.kind == FocusKind::Parcel) SetFocus({FocusKind::None});
  txtParcel.Enabled = flag;
  for (int i = 0; i < CourseLimit; ++i) {
    txtArc[i].Enabled = txtChord[i].Enabled = txtRadius[i].Enabled = flag;
    txtBearingArc[i].Enabled = txtBearingLine[i].Enabled = txtDistanceLine[i].Enabled = flag;
    cmdLineInvert[i].Enabled = cmdArcInvert[i].Enabled = flag;
    chksign[2 * i].Enabled = chksign[2 * i + 1].Enabled = flag;
  }
}

void EditorForm::EnableEditorFrames(bool flag) {
  Frame1.Enabled = Frame3.Enabled = Frame4.Enabled = frameBase.Enabled = flag;
  cmdZoom.Enabled = picParcelEnabled = flag;
  for (MenuItem* m : {&menus.mnuEdit, &menus.mnuView, &menus.mnuOptions, &menus.mnuReport,
                      &menus.mnuRelocateCAD, &menus.mnuCurrentCAD, &menus.mnuSizePicture}) {
    m->Enabled = flag;
  }
}

void EditorForm::CalculateAndDraw() {
  const bool wasEnabled = results.cmdZoomEnabled;
  try {
    parvenna::CalculateAndDraw(*this, Settings(), parcel, results, picture);
  } catch (const RunError&) {
    // A text that is no number (a second point, a bearing of one letter) is
    // judged when the parcel is saved; until then the figures cannot be had.
    DrawReadableCourses();
    for (Label* figure : {&results.lblClosure, &results.lblPrecision, &results.lblArea}) {
      figure->Caption = parvenna::messages::NotAvailable;
    }
    results.lblDirection.Caption.clear();
    results.lblClosure.ForeColor = colours::Black;  // neither within the tolerance nor over it
  }
  if (results.cmdZoomEnabled && !wasEnabled) cmdZoom.Enabled = true;
}

void EditorForm::Drawing() {
  try {
    parvenna::Drawing(*this, Settings(), parcel, results.lblLineNo, picture);
  } catch (const RunError&) {
    DrawReadableCourses();
  }
}

void EditorForm::DrawReadableCourses() {
  ReadableCourses readable(*this, FirstUnreadableRow(*this, project.notation()));
  ResumeNext([&] { parvenna::Drawing(readable, Settings(), parcel, results.lblLineNo, picture); });
}

void EditorForm::ToggleSketchZoom() {
  parvenna::ToggleSketchZoom(picParcel, Width, Height, NormalPictureWidth, NormalPictureHeight);
  if (toolTipsCleared_) picParcel.ToolTipText.clear();
  picture.SetSize(picParcel.Width, picParcel.Height);
  Drawing();
}

void EditorForm::ShowNotation() {
  lblBearing.Caption = project.BearingMode ? messages::BearingCaption : messages::AzimuthCaption;
}

void EditorForm::ClearToolTips() {
  toolTipsCleared_ = true;
  txtParcel.ToolTipText.clear();
  cbxParcel.ToolTipText.clear();
  picParcel.ToolTipText.clear();
  for (CommandButton* b : {&cmdZoom, &cmdPrevious, &cmdNext, &cmdInsert, &cmdEdit, &cmdDelete,
                           &cmdSave, &cmdCancel, &cmdAutoInverse}) {
    b->ToolTipText.clear();
  }
  for (int i = 0; i < CourseLimit; ++i) {
    for (CourseField f : {CourseField::BearingLine, CourseField::DistanceLine,
                          CourseField::BearingArc, CourseField::Arc, CourseField::Radius,
                          CourseField::Chord}) {
      Field(i, f).ToolTipText.clear();
    }
    cmdNo[i].ToolTipText.clear();
    cmdLineInvert[i].ToolTipText.clear();
    cmdArcInvert[i].ToolTipText.clear();
    chksign[2 * i].ToolTipText.clear();
    chksign[2 * i + 1].ToolTipText.clear();
  }
}

// ---- Commands on the parcel ------------------------------------------------------

void EditorForm::cmdEdit_Click() {
  SetFieldsEnabled(true);
  SetEditing(true);
  host.BringUpDrawing();
}

void EditorForm::cmdInsert_Click() {
  host.BringUpDrawing();
  ClearGrid();
  SetFieldsEnabled(true);
  cmdInsert.Enabled = false;
  SetEditing(true);
  cmdDelete.Enabled = menus.mnuDeleteParcel.Enabled = false;
  InsertingParcel = true;
  SetFocus({FocusKind::Parcel});
}

void EditorForm::StartParcelFromRowMenu() {
  if (InsertingParcel || parcelOnShow_) return;
  InsertingParcel = true;
  cmdDelete.Enabled = menus.mnuDeleteParcel.Enabled = false;
}

void EditorForm::cmdCancel_Click() {
  ResetEditor();
  UnmarkField(FocusRow, FocusField);
}

// The menu's cancel leaves the mark of the focused field where it is; the
// button's clears it.
void EditorForm::mnuCancelParcel_Click() { ResetEditor(); }

bool EditorForm::Form_QueryUnload() {
  if (ExitConfirmed) return true;
  if (!AskYesNo(prompter, messages::ExitParvenna)) return false;
  ExitConfirmed = true;
  return true;
}

}  // namespace parvenna::editor
