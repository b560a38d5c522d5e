#pragma once

namespace parvenna::editor {

// What the editor asks of the windows around it. The shell implements it;
// tests use a recording fake.
class EditorHost {
 public:
  virtual ~EditorHost() = default;
  // Editing starts: the drawing window comes up and the editor stays above it
  // without being moved, sized or activated.
  virtual void BringUpDrawing() = 0;
  // A grab starts with the setting to minimise on: the editor goes down and
  // uncovers the drawing.
  virtual void MinimizeEditor() = 0;
  // The row menu opens at the row button of `row`.
  virtual void ShowRowMenu(int row) = 0;
};

}  // namespace parvenna::editor
