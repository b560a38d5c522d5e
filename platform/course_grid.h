#pragma once

#include <string>

#include "platform/colour.h"

namespace parvenna {

// Rows of the grid, 0 to CourseLimit - 1.
inline constexpr int CourseLimit = 50;

enum class CourseKind { Line, Curve };

enum class CourseField { BearingLine, DistanceLine, BearingArc, Arc, Radius, Chord };

// The two area sign boxes of a curve row. Values: 0 clear, 1 ticked, 2 grey.
enum class SignBox { Plus, Minus };
inline constexpr int SignClear = 0;
inline constexpr int SignTicked = 1;
inline constexpr int SignGrey = 2;

// The course rows as the geometry sees them. On the screen these are the
// editor's row controls; any store of courses will serve. Geometry reads the
// texts afresh on every computation: the texts are the data.
class CourseGrid {
 public:
  virtual ~CourseGrid() = default;

  virtual CourseKind Kind(int row) const = 0;
  virtual const std::string& Text(int row, CourseField field) const = 0;
  virtual int Sign(int row, SignBox box) const = 0;

  // Writes BearingLine or BearingArc of a row. In the editor this fires the
  // field's Change, and so the recalculation, before it returns.
  virtual void WriteBearing(int row, CourseField field, const std::string& text) = 0;

  // Paints a field, or the row button cmdNo(row), as needing attention.
  virtual void MarkField(int row, CourseField field, Rgb colour) = 0;
  virtual void MarkRowButton(int row, Rgb colour) = 0;
  // Moves the focus to a field of a row.
  virtual void MoveFocus(int row, CourseField field) = 0;
};

}  // namespace parvenna
