#include "drawing/grabbing.h"

#include <algorithm>

#include "drawing/grab_text.h"
#include "drawing/viewer.h"
#include "geometry/bearing_text.h"
#include "platform/run_error.h"

namespace parvenna::drawing {
namespace {

bool AcceptedBearing(const Notation& notation, std::string& text) {
  try {
    return IsValidBearing(notation, text);
  } catch (const RunError&) {
    return false;
  }
}

std::string Upper(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

void ReplaceAll(std::string& text, const std::string& find, std::string_view with) {
  if (find.empty()) return;
  for (auto at = text.find(find); at != std::string::npos; at = text.find(find, at + with.size())) {
    text.replace(at, find.size(), with);
  }
}

bool NumericField(const std::string& name, CourseField& field) {
  if (name == "txtArc") field = CourseField::Arc;
  else if (name == "txtRadius") field = CourseField::Radius;
  else if (name == "txtChord") field = CourseField::Chord;
  else return false;
  return true;
}

// A number that arrives on a bearing field belongs to the course before.
void NumberForRowBefore(GrabEditor& editor, int focusRow, const std::string& value) {
  if (focusRow < 2) {
    editor.WriteParcelName(editor.ParcelName() + " " + value);
    return;
  }
  const int before = focusRow - 2;
  if (editor.LineFrameVisible(before)) editor.ChangeLineToCurve(before);
  const std::string name = editor.ArcFieldOrder()[2];
  CourseField field;
  if (NumericField(name, field)) editor.WriteField(before, field, NumberFromText(value));
  else if (name == "txtBearing") editor.WriteField(before, CourseField::BearingArc, value);
}

// A bearing where the course is complete starts the next course.
int NewCourse(GrabEditor& editor, int focusRow, const std::string& bearing) {
  if (focusRow >= CourseLimit) return 1;
  const int next = focusRow;  // the row after FocusRow - 1
  editor.OpenRow(next);
  if (editor.LineFrameVisible(next)) {
    editor.WriteField(next, CourseField::BearingLine, bearing);
  } else {
    editor.WriteField(next, CourseField::BearingArc, bearing);
  }
  editor.SetFocus(focusRow + 1, 2);
  return 0;
}

void FocusNextRow(GrabEditor& editor, int focusRow) {
  if (focusRow < CourseLimit) editor.SetFocus(focusRow + 1, 1);
}

// Step 9 of a pick, also run for each waiting value: labels without digits
// take no course field. False when the parcel is full.
bool HandOn(GrabEditor& editor, const Notation& notation, const std::string& value) {
  if (value.empty()) return true;
  if (editor.FocusRow() != 0 && NumberFromText(value) == "0") return true;
  if (PutGrabbedValue(editor, notation, value) == 1) {
    editor.ShowCourseLimit();
    return false;
  }
  return true;
}

}  // namespace

int PutGrabbedValue(GrabEditor& editor, const Notation& notation, const std::string& input) {
  std::string value = input;
  std::string checked = input;
  const bool bearing = AcceptedBearing(notation, checked);
  if (bearing) {
    value = Upper(checked);
    ReplaceAll(value, Upper(notation.DegreeSymbolText), DegreeMark);
  }
  const int focusRow = editor.FocusRow();
  const int focusField = editor.FocusField();
  const int r = focusRow - 1;

  if (focusRow == 0) {
    if (bearing) {
      if (editor.LineFrameVisible(0) && editor.FieldText(0, CourseField::BearingLine).empty()) {
        editor.WriteField(0, CourseField::BearingLine, value);
      } else if (editor.ArcFrameVisible(0) &&
                 editor.FieldText(0, CourseField::BearingArc).empty()) {
        editor.WriteField(0, CourseField::BearingArc, value);
      }
      editor.LetEventsRun();
      editor.SetFocus(1, 2);
    } else {
      editor.WriteParcelName(value);
      editor.SetFocus(1, 1);
    }
    return 0;
  }

  if (!editor.LineFrameVisible(r)) {  // a curve
    if (bearing && focusField > 1) return NewCourse(editor, focusRow, value);
    if (focusField < 1 || focusField > 4) return 0;
    const std::string name = editor.ArcFieldOrder()[static_cast<std::size_t>(focusField - 1)];
    CourseField field;
    if (NumericField(name, field)) {
      editor.WriteField(r, field, NumberFromText(value));
      if (focusField < 4) editor.SetFocus(focusRow, focusField + 1);
      else FocusNextRow(editor, focusRow);
    } else if (name == "txtBearing") {
      if (bearing) {
        editor.WriteField(r, CourseField::BearingArc, value);
        editor.SetFocus(focusRow, 2);
      } else {
        NumberForRowBefore(editor, focusRow, value);
      }
    }
    return 0;
  }

  // A line.
  if (focusField == 1) {
    if (bearing) {
      editor.WriteField(r, CourseField::BearingLine, value);
      editor.SetFocus(focusRow, 2);
    } else {
      NumberForRowBefore(editor, focusRow, value);
    }
  } else if (focusField == 2) {
    if (bearing) return NewCourse(editor, focusRow, value);
    editor.WriteField(r, CourseField::DistanceLine, NumberFromText(value));
    FocusNextRow(editor, focusRow);
  }
  return 0;
}

PickedText PickText(Viewer& view, Point at, const Notation& notation, int grabMode) {
  PickedText picked;
  if (!view.FindTextAt(at)) return picked;
  picked.found = true;
  picked.handle = view.FoundHandle();
  picked.text = view.FoundText();
  picked.values = GrabbedValues(notation, picked.text, grabMode);
  return picked;
}

void PickInView(Viewer& view, Point at, GrabEditor& editor, GrabState& state,
                const Notation& notation, int grabMode) {
  if (!editor.Editing() || !view.IsLoaded()) return;
  if (editor.FocusRow() != 0) {
    const auto inRange = [&] {
      const int row = editor.FocusRow() - 1;
      const int count = editor.LineFrameVisible(row) ? 2 : 4;
      const int field = editor.FocusField();
      return field >= 1 && field <= count;
    };
    if (!inRange()) {
      if (editor.FocusField() > 4 && !editor.LineFrameVisible(editor.FocusRow() - 1)) {
        editor.AdvanceCurveField();
      }
      if (editor.FocusRow() != 0 && !inRange()) return;
    }
  }
  PickedText picked = PickText(view, at, notation, grabMode);
  if (!picked.found) return;
  if (std::find(state.usedEntities.begin(), state.usedEntities.end(), picked.handle) ==
      state.usedEntities.end()) {
    view.MarkUsed(picked.handle);
    state.usedEntities.push_back(picked.handle);
  }
  if (!state.GrabActive) {
    for (const std::string& value : picked.values) {
      if (!HandOn(editor, notation, value)) break;
    }
  } else {
    for (const std::string& value : picked.values) {
      if (!value.empty()) state.GrabQueue.push_back(value);
    }
  }
  editor.GotoFocusLine();
}

void FlushGrabQueue(GrabEditor& editor, GrabState& state, const Notation& notation) {
  state.GrabActive = false;
  for (const std::string& value : state.GrabQueue) {
    if (!HandOn(editor, notation, value)) break;
  }
  state.GrabQueue.clear();
}

}  // namespace parvenna::drawing
