#pragma once

#include "drawing/grab_editor.h"
#include "editor/editor_form.h"

namespace parvenna::drawing {

// The editor form as grabbing sees it: focus, faces, fields and the row
// routines, each the form's own.
class EditorGrab : public GrabEditor {
 public:
  explicit EditorGrab(editor::EditorForm& form) : form_(form) {}

  bool Editing() const override { return form_.cmdSave.Enabled; }
  int FocusRow() const override { return form_.FocusRow; }
  int FocusField() const override { return form_.FocusField; }
  void SetFocus(int focusRow, int focusField) override;
  bool LineFrameVisible(int row) const override { return form_.frameLine.at(row).Visible; }
  bool ArcFrameVisible(int row) const override { return form_.frameArc.at(row).Visible; }
  std::string FieldText(int row, CourseField field) const override { return form_.Text(row, field); }
  void WriteField(int row, CourseField field, const std::string& text) override {
    form_.SetFieldText(row, field, text);
  }
  std::string ParcelName() const override { return form_.txtParcel.Text; }
  void WriteParcelName(const std::string& text) override { form_.txtParcel.Text = text; }
  void OpenRow(int row) override;
  void ChangeLineToCurve(int row) override;
  std::array<std::string, 4> ArcFieldOrder() const override;
  void AdvanceCurveField() override;
  void ShowCourseLimit() override;
  void GotoFocusLine() override { form_.GotoFocusLine(); }

 private:
  editor::EditorForm& form_;
};

}  // namespace parvenna::drawing
