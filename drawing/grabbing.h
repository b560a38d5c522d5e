#pragma once

#include <deque>
#include <string>
#include <vector>

#include "drawing/geometry2d.h"
#include "drawing/grab_editor.h"
#include "editor/grab_state.h"
#include "geometry/notation.h"

// From a click on a label to values in the editor's fields.
namespace parvenna::drawing {

class Viewer;

using editor::GrabState;

// The text entity a click finds, and its values.
struct PickedText {
  bool found = false;
  std::string handle;
  std::string text;  // as the label shows it, percent codes as written
  std::deque<std::string> values;
};

// Finds the text entity at a drawing point and cleans its text; the view's
// search moves on past lines and other entities to the first text.
PickedText PickText(Viewer& view, Point at, const Notation& notation, int grabMode);

// A click in a view while a parcel is edited: finds the label, marks it as
// used, and hands its values to the fields, or to GrabQueue while GrabActive
// is set. Does nothing without a drawing, without a parcel being edited, or
// with the focus on no field that takes a value.
void PickInView(Viewer& view, Point at, GrabEditor& editor, GrabState& state,
                const Notation& notation, int grabMode);

// Puts one value into the focused field and moves the focus on. 1 when the
// parcel is full and the value had no place, otherwise 0.
int PutGrabbedValue(GrabEditor& editor, const Notation& notation, const std::string& value);

// Hands the waiting values to the fields and empties the queue.
void FlushGrabQueue(GrabEditor& editor, GrabState& state, const Notation& notation);

}  // namespace parvenna::drawing
