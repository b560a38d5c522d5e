#pragma once

#include "editor/editor_form.h"

namespace parvenna::editor {

// Coalesces the recalculations of many moved texts into one, run when the
// outermost batch ends.
class ChangeBatch {
 public:
  explicit ChangeBatch(EditorForm& form) : form_(form) { ++form_.batchDepth_; }
  ~ChangeBatch() {
    if (--form_.batchDepth_ == 0 && form_.recalcPending_) {
      form_.recalcPending_ = false;
      form_.CalculateAndDraw();
    }
  }
  ChangeBatch(const ChangeBatch&) = delete;
  ChangeBatch& operator=(const ChangeBatch&) = delete;

 private:
  EditorForm& form_;
};

}  // namespace parvenna::editor
