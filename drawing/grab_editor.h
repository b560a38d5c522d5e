#pragma once

#include <array>
#include <string>

#include "platform/course_grid.h"

// What grabbing needs of the parcel editor. The editor form implements it;
// grabbing knows nothing else of the editor.
//
// Rows are counted two ways, as the editor does: FocusRow from 1, with 0 for
// the parcel name; the row arguments of the field calls from 0.
namespace parvenna::drawing {

class GrabEditor {
 public:
  virtual ~GrabEditor() = default;

  // A parcel is being edited (its save button is on).
  virtual bool Editing() const = 0;

  virtual int FocusRow() const = 0;
  // On a line 1 is the bearing and 2 the distance; on a curve 1 to 4 are the
  // places of ArcFieldOrder.
  virtual int FocusField() const = 0;
  // Puts the focus on a field, as a click on it would; the editor's focus
  // rules then set FocusRow and FocusField.
  virtual void SetFocus(int focusRow, int focusField) = 0;

  // The line face and the curve face of a row; a curve row hides its line face.
  virtual bool LineFrameVisible(int row) const = 0;
  virtual bool ArcFrameVisible(int row) const = 0;

  virtual std::string FieldText(int row, CourseField field) const = 0;
  // Writes a field, which fires its Change (and so the recalculation).
  virtual void WriteField(int row, CourseField field, const std::string& text) = 0;
  virtual std::string ParcelName() const = 0;
  virtual void WriteParcelName(const std::string& text) = 0;

  // Enables a row's frames and its invert button.
  virtual void OpenRow(int row) = 0;
  // The editor's own change of a line into a curve.
  virtual void ChangeLineToCurve(int row) = 0;
  // The curve fields by place: entry 0 is place 1. Each one of "txtArc",
  // "txtRadius", "txtChord", "txtBearing".
  virtual std::array<std::string, 4> ArcFieldOrder() const = 0;
  // Moves the focus on from a curve field beyond the last place.
  virtual void AdvanceCurveField() = 0;

  // The limit box: "The maximum number of courses is 50."
  virtual void ShowCourseLimit() = 0;
  // Lets pending events run before the focus moves.
  virtual void LetEventsRun() {}
  // Scrolls the grid so that the focused row shows.
  virtual void GotoFocusLine() = 0;
};

}  // namespace parvenna::drawing
