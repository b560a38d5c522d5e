#pragma once

#include <QPalette>

#include "platform/colour.h"

class QWidget;

namespace parvenna::ui {

// Which pair of colours of a control the model sets.
enum class Surface {
  Field,   // a text box: its base and its text
  Button,  // a button, or a combo box's face: the button and its text
  Face,    // a label or a frame that fills its background: the window and its text
};

// Paints a control's background and its text together. A model's colours are
// fixed values, not the desktop's: a fixed background under the desktop's
// text colour is unreadable on a dark desktop, so the text colour is never
// left to the desktop where the background is not. A disabled control shows
// its text halfway to the background.
void SetControlColours(QWidget* widget, Surface surface, Rgb back, Rgb fore = colours::Black);

}  // namespace parvenna::ui
