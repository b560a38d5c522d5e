#pragma once

// What the drawing window's model asks of the windows around it. The main
// window implements it; tests use a recording fake. Without a host the form
// asks nothing.
namespace parvenna::drawing {

// A window's place in the main window's working area, in twips.
struct WindowRect {
  double Left = 0;
  double Top = 0;
  double Width = 0;
  double Height = 0;
  friend bool operator==(const WindowRect&, const WindowRect&) = default;
};

class ViewHost {
 public:
  virtual ~ViewHost() = default;
  // A pick or Done wrote into the editor's fields: its window reads the
  // editor form again.
  virtual void EditorChanged() = 0;
  // The layout menus: the editor and the drawing window take these places.
  virtual void PlaceWindows(const WindowRect& editor, const WindowRect& view) = 0;
  // The area changed size: the drawing window takes `view`, and the editor
  // takes `editor` unless the user moved or sized it since a layout placed it.
  virtual void FollowArea(const WindowRect& /*editor*/, const WindowRect& /*view*/) {}
  // Done: the editor, minimised for the grab, comes back to show the values.
  virtual void RestoreEditor() {}
};

}  // namespace parvenna::drawing
