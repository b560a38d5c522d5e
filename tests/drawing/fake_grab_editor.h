#pragma once

#include <map>
#include <string>
#include <vector>

#include "drawing/grab_editor.h"

namespace parvenna::testing {

// The parcel editor as grabbing sees it: fifty rows of texts, a focus, and a
// record of the limit boxes.
class FakeGrabEditor : public drawing::GrabEditor {
 public:
  struct Row {
    bool line = true;
    bool open = false;
    std::map<CourseField, std::string> fields;
  };

  FakeGrabEditor() { rows[0].open = true; }

  bool Editing() const override { return editing; }
  int FocusRow() const override { return focusRow; }
  int FocusField() const override { return focusField; }
  void SetFocus(int row, int field) override {
    focusRow = row;
    focusField = field;
  }
  bool LineFrameVisible(int row) const override { return rows.at(static_cast<std::size_t>(row)).line; }
  bool ArcFrameVisible(int row) const override { return !rows.at(static_cast<std::size_t>(row)).line; }
  std::string FieldText(int row, CourseField field) const override {
    const auto& f = rows.at(static_cast<std::size_t>(row)).fields;
    auto it = f.find(field);
    return it == f.end() ? std::string() : it->second;
  }
  void WriteField(int row, CourseField field, const std::string& text) override {
    rows.at(static_cast<std::size_t>(row)).fields[field] = text;
    writes.push_back(text);
  }
  std::string ParcelName() const override { return name; }
  void WriteParcelName(const std::string& text) override { name = text; }
  void OpenRow(int row) override { rows.at(static_cast<std::size_t>(row)).open = true; }
  void ChangeLineToCurve(int row) override {
    Row& r = rows.at(static_cast<std::size_t>(row));
    r.line = false;
    r.fields[CourseField::BearingArc] = r.fields[CourseField::BearingLine];
    curvesMade.push_back(row);
  }
  std::array<std::string, 4> ArcFieldOrder() const override { return order; }
  void AdvanceCurveField() override { ++advanced; }
  void ShowCourseLimit() override { ++limitBoxes; }
  void GotoFocusLine() override { ++scrolled; }

  std::string Text(int row, CourseField field) const { return FieldText(row, field); }

  bool editing = true;
  int focusRow = 1;
  int focusField = 1;
  std::string name;
  std::array<std::string, 4> order{"txtBearing", "txtArc", "txtRadius", "txtChord"};
  std::array<Row, CourseLimit> rows{};
  std::vector<std::string> writes;
  std::vector<int> curvesMade;
  int advanced = 0;
  int limitBoxes = 0;
  int scrolled = 0;
};

}  // namespace parvenna::testing
