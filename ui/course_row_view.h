#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "editor/editor_form.h"
#include "ui/course_field_edit.h"

namespace parvenna::ui {

// A three-state area sign box whose value the model keeps: a click or Space
// changes nothing by itself but is handed to onToggle, with whether the mouse
// did it (the model then runs the box's own rule, and MouseUp for a mouse).
class SignCheckBox : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;
  std::function<void(bool byMouse)> onToggle;

 protected:
  void nextCheckState() override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  bool byMouse_ = false;
};

// The controls of one course row: the row button, the line face and the curve
// face, placed in the row area at the row's Top. Mirror copies the row's state
// from the form, touching only what changed since the last time.
class CourseRowView {
 public:
  CourseRowView(QWidget* rowArea, int row);

  void Mirror(const editor::EditorForm& form);

  int row;
  QPushButton* cmdNo;
  QWidget* frameLine;
  CourseFieldEdit* txtBearingLine;
  CourseFieldEdit* txtDistanceLine;
  QPushButton* cmdLineInvert;
  QWidget* frameArc;
  CourseFieldEdit* txtBearingArc;
  CourseFieldEdit* txtArc;
  CourseFieldEdit* txtRadius;
  CourseFieldEdit* txtChord;
  SignCheckBox* chkPlus;   // chksign(2 * row)
  SignCheckBox* chkMinus;  // chksign(2 * row + 1)
  QPushButton* cmdArcInvert;

  CourseFieldEdit* Field(CourseField field) const;

  // The width of the row area that the rows need, in twips.
  static double AreaWidth();

 private:
  struct TextState {
    std::string text, tip;
    Rgb back;
    bool enabled, visible;
    int left, top;
    bool operator==(const TextState&) const = default;
  };
  struct ButtonState {
    std::string caption, tip;
    Rgb back;
    bool enabled, visible;
    int top;
    bool operator==(const ButtonState&) const = default;
  };
  struct SignState {
    int value;
    bool enabled, visible;
    std::string caption, tip;
    bool operator==(const SignState&) const = default;
  };
  struct FrameState {
    bool enabled, visible;
    int top, height;
    bool operator==(const FrameState&) const = default;
  };

  void MirrorText(QLineEdit* edit, const TextBox& box, int left, int top,
                  std::optional<TextState>& shown);
  void MirrorButton(QPushButton* button, const CommandButton& model, int top,
                    std::optional<ButtonState>& shown);
  void MirrorSign(SignCheckBox* box, const CheckBox& model, std::optional<SignState>& shown);
  void MirrorFrame(QWidget* frame, const Frame& model, std::optional<FrameState>& shown);
  void PlaceLabel(QLabel* label, int left, int top);

  QLabel* lblB_;
  QLabel* lblD_;
  QLabel* lblArcB_;
  QLabel* lblA_;
  QLabel* lblR_;
  QLabel* lblC_;
  std::optional<ButtonState> cmdNoShown_, lineInvertShown_, arcInvertShown_;
  std::optional<FrameState> lineShown_, arcShown_;
  std::array<std::optional<TextState>, 6> fieldShown_;
  std::optional<SignState> plusShown_, minusShown_;
};

}  // namespace parvenna::ui
