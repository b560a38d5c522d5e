#pragma once

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "editor/editor_host.h"
#include "editor/grab_state.h"
#include "geometry/closure.h"
#include "geometry/course.h"
#include "geometry/sketch.h"
#include "platform/canvas.h"
#include "platform/controls.h"
#include "platform/prompter.h"
#include "platform/run_error.h"
#include "store/project_state.h"

namespace parvenna::store {
class Database;
}

namespace parvenna::editor {

// The menu entries of the main window whose state the editor sets. The main
// menu's model reads them from here.
struct EditorMenus {
  MenuItem mnuEditMode = Menu("Edit mode");
  MenuItem mnuSaveParcel = Menu("&Save parcel");
  MenuItem mnuCancelParcel = Menu("&Cancel parcel");
  MenuItem mnuInsertParcel = Menu("&Insert parcel");
  MenuItem mnuDeleteParcel = Menu("&Delete parcel");
  MenuItem mnuPopEdit = Menu("&Edit");
  MenuItem mnuPopChangeLineCurve = Menu("Change to curve");
  // Enabled with the editor's frames when a project is open.
  MenuItem mnuEdit = Menu("&Edit");
  MenuItem mnuView = Menu("&View");
  MenuItem mnuOptions = Menu("O&ptions");
  MenuItem mnuReport = Menu("&Report");
  MenuItem mnuRelocateCAD = Menu("Re&locate drawing file");
  MenuItem mnuCurrentCAD = Menu("Current drawing file path");
  MenuItem mnuSizePicture = Menu("Full picture");
};

// Which control has the focus.
enum class FocusKind { None, Parcel, ParcelList, Field, RowButton, ScrollBar, Other };
struct FocusTarget {
  FocusKind kind = FocusKind::None;
  int row = -1;
  CourseField field = CourseField::BearingLine;
  friend bool operator==(const FocusTarget&, const FocusTarget&) = default;
};

// The editor form: fifty course rows, the parcel list and name, the results
// and the sketch. Its rows are the working store of the parcel on show, and
// the geometry reads them through the CourseGrid port. Every assignment that
// raises an event on a form raises it here too, through the setters below.
class EditorForm : public CourseGrid {
 public:
  EditorForm(store::ProjectState& project, Prompter& prompter, Canvas& picture, EditorHost& host);

  // ---- Controls -----------------------------------------------------------
  TextBox txtParcel;
  ComboBox cbxParcel;
  std::array<CommandButton, CourseLimit> cmdNo{};
  std::array<Frame, CourseLimit> frameLine{};
  std::array<Frame, CourseLimit> frameArc{};
  std::array<TextBox, CourseLimit> txtBearingLine{};
  std::array<TextBox, CourseLimit> txtDistanceLine{};
  std::array<TextBox, CourseLimit> txtBearingArc{};
  std::array<TextBox, CourseLimit> txtArc{};
  std::array<TextBox, CourseLimit> txtRadius{};
  std::array<TextBox, CourseLimit> txtChord{};
  std::array<Label, CourseLimit> lblA{}, lblR{}, lblC{};
  std::array<CommandButton, CourseLimit> cmdLineInvert{};
  std::array<CommandButton, CourseLimit> cmdArcInvert{};
  std::array<CheckBox, 2 * CourseLimit> chksign{};
  ScrollBar VScroll1;
  Frame frameBase, Frame1, Frame3, Frame4;
  SketchBox picParcel;
  bool picParcelEnabled = true;
  // lblClosure, lblDirection, lblPrecision, lblArea, lblLineNo, cmdZoom's state.
  ResultPanel results;
  CommandButton cmdZoom = Button("&Zoom"), cmdPrevious = Button("<"), cmdNext = Button(">"),
                cmdInsert = Button("&New"), cmdEdit = Button("Ed&it"),
                cmdDelete = Button("&Delete"), cmdSave = Button("&Save/New"),
                cmdCancel = Button("&Cancel"), cmdAutoInverse = Button("&Auto");
  EditorMenus menus;
  // The caption of the line rows' direction: "Bearing" or "Azimuth", by the
  // project's notation (ShowNotation).
  Label lblBearing;
  double Height = MinimumHeight;  // the form's inner height
  double Width = 9015;   // the form's inner width

  // ---- Editor state -------------------------------------------------------
  int FocusRow = 0;    // 1-based row of the field that last took focus; 0 the name box
  int FocusField = 1;  // 1 bearing, 2 distance, or a curve field's place
  int CurrentRow = CourseLimit;
  bool InsertingParcel = false;
  bool ExitConfirmed = false;
  long ParcelID = 0;
  GrabState grab;  // GrabActive, GrabQueue, the entities used
  ParcelState parcel;  // RecalcSuspended, CalcEnabled, NorthRestored, LastCourse, results
  FocusTarget focus;
  // The field name at each place 1 to 4 of the curve order ("txtArc", ...).
  std::array<std::string, 5> ArcFieldOrder{};

  static constexpr double MinimumHeight = 5750;  // of the form's inner height
  static constexpr double K = 800.0 / 32000 * CourseLimit;  // 1.25 twips a unit of the bar
  static constexpr double LineHeight = 400;
  static constexpr double CurveHeight = 800;

  // ---- Setters that raise the form's events -------------------------------
  TextBox& Field(int row, CourseField field);
  const TextBox& Field(int row, CourseField field) const;
  void SetFieldText(int row, CourseField field, const std::string& text);  // fires Change
  void SetSign(int index, int value);                                     // fires Click
  void SetListIndex(int index);                                          // fires cbxParcel_Click
  void SetFocus(FocusTarget target);  // LostFocus of the old, GotFocus of the new

  // ---- Course grid port ---------------------------------------------------
  CourseKind Kind(int row) const override;
  const std::string& Text(int row, CourseField field) const override;
  int Sign(int row, SignBox box) const override;
  void WriteBearing(int row, CourseField field, const std::string& text) override;
  void MarkField(int row, CourseField field, Rgb colour) override;
  void MarkRowButton(int row, Rgb colour) override;
  void MoveFocus(int row, CourseField field) override;

  // ---- Rows, layout, scrolling ---------------------------------------------
  void Form_Load();
  void Form_Resize(double innerHeight);
  bool IsOpen(int row) const { return frameLine[row].Enabled || frameArc[row].Enabled; }
  double RowHeight(int row) const { return frameLine[row].Visible ? LineHeight : CurveHeight; }
  void OpenRow(int row);
  void VScroll1_Change(int value);
  void VScroll1_GotFocus();
  void VScroll1_LostFocus();
  // The mouse wheel over the rows: `steps` small changes down (up when
  // negative), never past the rows in use.
  void VScroll1_Wheel(int steps);
  void GotoFocusLine();
  // True when the whole of the row stands inside frameBase.
  bool RowInView(int row) const;
  void LayoutArcFields();
  void SetTabOrder();
  int ArcFieldPosition(const std::string& name) const;
  // The field at a place 1 to 4 of the curve order.
  CourseField ArcFieldAt(int place) const;
  void ChangeLineCurve(int row);
  void ShiftRowsBelow(double delta, int row);

  // ---- States ---------------------------------------------------------------
  void ClearGrid();
  void ResetEditor();
  void SetEditing(bool flag);
  void SetFieldsEnabled(bool flag);
  void EnableEditorFrames(bool flag);
  // Walks the courses and shows the results; a text that is no number shows
  // "N/A" and the sketch of the courses before it, never a box.
  void CalculateAndDraw();
  void Drawing();
  // The project's notation named in lblBearing.
  void ShowNotation();
  // Tooltips off: every control of the form loses its tooltip, for the run.
  void ClearToolTips();

  // ---- Field entry ----------------------------------------------------------
  // The key as it reaches the field, 0 when refused.
  char32_t Field_KeyPress(int row, CourseField field, char32_t key) const;
  void Field_Click(int row, CourseField field);
  void Field_DblClick(int row, CourseField field);
  void Field_Change(int row, CourseField field);
  void Field_GotFocus(int row, CourseField field);
  void Field_LostFocus(int row, CourseField field);
  void txtParcel_GotFocus();
  void txtParcel_LostFocus();
  void txtParcel_Click();
  void txtParcel_DblClick();
  void UnmarkField(int row, int field);
  void cmdNo_GotFocus(int row);
  void cmdNo_LostFocus(int row);
  void cmdNo_MouseUp(int row);
  // A sign box changed by its own rule: a click on it, or Space.
  void chksign_Toggle(int index);
  void chksign_MouseUp(int index);
  void chksign_Click(int index);
  void cmdLineInvert_Click(int row);
  void cmdArcInvert_Click(int row);
  void FlipCurrentBearing();
  void cmdAutoInverse_Click();
  void mnuNorthing_Click();
  void ToggleSketchZoom();

  // ---- Commands on the parcel and the courses ----------------------------------
  void cmdEdit_Click();  // also mnuEditMode, mnuPopEdit
  void cmdInsert_Click();  // also mnuInsertParcel
  void cmdCancel_Click();
  void mnuCancelParcel_Click();
  // False when the surveyor chose to keep course 50, which the insertion
  // would have pushed off the grid: nothing moved then.
  bool Insert_Proc(int row);
  void Delete_Proc(int row);
  void ClearRow(int row);
  void mnuInsertBefore_Click();
  void mnuPopInsertBefore_Click();
  void mnuInsertAfter_Click();
  void mnuPopInsertAfter_Click();
  void mnuDeleteCourse_Click();
  void mnuPopDelete_Click();
  void mnuChangeLineCurve_Click();
  void mnuPopChangeLineCurve_Click();
  // The Edit menu's row commands: a row is current and open, and saving is on.
  bool RowCommandsEnabled() const;

  // ---- Parcel life ------------------------------------------------------------
  // A stored parcel is read whatever the file holds: a Null or a text where a
  // number belongs, a column missing, no courses at all. The parcel shows what
  // can be shown of it, and a project that cannot be read says so in a box.
  void Parcel_Bound();
  void Show_Parcels();
  void Show_Detail();
  void cbxParcel_Click();
  void cmdNext_Click();
  void cmdPrevious_Click();
  bool ValidateParcel();
  // Saving writes the parcel whole or not at all. A store that refuses (a
  // read-only project, a full disk, a locked or damaged file) is named in a
  // box and the parcel stays on screen in Editing; only a duplicate name has
  // the words of its own. True when the parcel was stored.
  bool cmdSave_Click();
  bool InsertParcel();
  bool UpdateParcel();
  // The courses of the open rows into tblMeasurements under `parcelId`,
  // through the opening of the save that holds the transaction.
  void WriteRows(store::Database& db, long parcelId);
  // True when the parcel was deleted.
  bool Delete_Parcel();
  // The rows filled with a parcel's courses from row 0, as loading a stored
  // parcel fills them, with one open empty row after the last when there is
  // room. Nothing is computed while they fill.
  void FillRows(const std::vector<Course>& courses);
  // The rows hold the parcel selected in the list, as it was loaded or saved.
  bool ParcelOnShow() const { return parcelOnShow_; }
  // True when the window may close.
  bool Form_QueryUnload();

  // The name as stored: names under 6 characters are right-aligned in 6.
  static std::string PaddedName(const std::string& typed);

  store::ProjectState& project;
  Prompter& prompter;
  Canvas& picture;
  EditorHost& host;
  GeometrySettings Settings() const { return project.Geometry(); }

 private:
  friend class ChangeBatch;
  void CopyRow(int to, int from, double delta, bool withColours);
  void SetScrollValue(int value);
  // The bar's Max while it has the focus: the rows in use, no further.
  int RowsInUseMax() const;
  int LastOpenRow() const;
  void DrawReadableCourses();
  bool toolTipsCleared_ = false;
  // A change of a course field recalculates, or, inside a batch of moves,
  // once at the end of the batch: each recalculation reads only what the rows
  // hold, so the last one alone decides what is shown.
  void Recalculate();
  int batchDepth_ = 0;
  bool recalcPending_ = false;
  bool parcelOnShow_ = false;
  // A row-menu command with no parcel on show starts a new parcel: it never
  // edits the one shown last.
  void StartParcelFromRowMenu();
  // What the store could not keep as the surveyor sees it: a name over 50
  // characters, a course of the rows to be written that is blank or holds a
  // number that does not read. Names the course in a box; false then.
  bool CheckStorable(bool allOpenRows);
  int RowsWritten() const;
  bool RowIsBlank(int row) const;
  void ReportStoreFailure(const char* action, const RunError& failure);
  double NormalPictureWidth = 4995;
  double NormalPictureHeight = 4995;
};

}  // namespace parvenna::editor
