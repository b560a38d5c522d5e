#include "drawing/editor_grab.h"

#include "editor/messages.h"

namespace parvenna::drawing {

void EditorGrab::SetFocus(int focusRow, int focusField) {
  if (focusRow == 0) {
    form_.SetFocus({editor::FocusKind::Parcel});
    return;
  }
  const int row = focusRow - 1;
  if (row >= CourseLimit) return;
  CourseField field;
  if (form_.frameLine[row].Visible) {
    field = focusField == 1 ? CourseField::BearingLine : CourseField::DistanceLine;
  } else {
    field = form_.ArcFieldAt(focusField);
  }
  form_.SetFocus({editor::FocusKind::Field, row, field});
}

void EditorGrab::OpenRow(int row) {
  form_.OpenRow(row);
  form_.cmdLineInvert.at(row).Enabled = form_.cmdArcInvert.at(row).Enabled = true;
}

void EditorGrab::ChangeLineToCurve(int row) {
  if (form_.frameLine.at(row).Visible) form_.ChangeLineCurve(row);
}

std::array<std::string, 4> EditorGrab::ArcFieldOrder() const {
  return {form_.ArcFieldOrder[1], form_.ArcFieldOrder[2], form_.ArcFieldOrder[3],
          form_.ArcFieldOrder[4]};
}

void EditorGrab::AdvanceCurveField() {
  if (form_.FocusRow < CourseLimit) SetFocus(form_.FocusRow + 1, 1);
}

void EditorGrab::ShowCourseLimit() {
  Inform(form_.prompter,
         editor::messages::MaximumCoursesStart + std::to_string(CourseLimit) + ".");
}

}  // namespace parvenna::drawing
