#include "geometry/validation.h"

#include "geometry/bearing_text.h"
#include "geometry/curve_check.h"
#include "geometry/messages.h"
#include "geometry/tangency.h"

namespace parvenna {
namespace {

bool Empty(const CourseGrid& grid, int row, CourseField field) {
  return grid.Text(row, field).empty();
}

bool CurveFieldsFull(const CourseGrid& grid, int row) {
  return !Empty(grid, row, CourseField::BearingArc) && !Empty(grid, row, CourseField::Chord) &&
         !Empty(grid, row, CourseField::Arc) && !Empty(grid, row, CourseField::Radius);
}

bool LineFieldsFull(const CourseGrid& grid, int row) {
  return !Empty(grid, row, CourseField::BearingLine) && !Empty(grid, row, CourseField::DistanceLine);
}

}  // namespace

bool ValidateCourses(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                     Prompter& prompter) {
  bool ok = true;
  if (!CurveFieldsFull(grid, 0) && !LineFieldsFull(grid, 0)) {
    Inform(prompter, messages::NoCourse);
    ok = false;
  }
  if (!CheckSignsSet(grid) && settings.AddAreaCheck) {
    Inform(prompter, messages::ConfirmSegmentArea);
    ok = false;
  }
  if (!CheckCurves(grid, prompter)) ok = false;
  if (!CheckTangency(grid, settings, state, prompter)) ok = false;

  // Every stored row must carry a bearing of the project's notation. A curve
  // counts here only once its sign is confirmed.
  for (int row = 0; row < CourseLimit; ++row) {
    const bool confirmed = grid.Sign(row, SignBox::Plus) == SignTicked ||
                         grid.Sign(row, SignBox::Minus) == SignTicked;
    if (!LineFieldsFull(grid, row) && !(CurveFieldsFull(grid, row) && confirmed)) break;
    const CourseField field =
        grid.Kind(row) == CourseKind::Line ? CourseField::BearingLine : CourseField::BearingArc;
    std::string text = grid.Text(row, field);
    if (!IsValidBearing(settings.notation, text)) {
      grid.MoveFocus(row, field);
      Inform(prompter, messages::BearingInvalid);
      return false;
    }
  }
  return ok;
}

}  // namespace parvenna
