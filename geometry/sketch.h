#pragma once

#include <array>
#include <string>

#include "geometry/closure.h"

namespace parvenna {

// Paints the parcel into the picture, fitted, with a number beside each course
// and a frame. Coord is left in picture positions. Stops early, leaving what
// it drew, where a curve cannot be drawn or the figure has no extent.
void Drawing(const CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
             std::array<Label, CourseLimit>& lblLineNo, Canvas& picParcel);

// The placement of the sketch box on the editor, in twips.
struct SketchBox {
  double Left = 3870;
  double Top = 0;
  double Width = 0;
  double Height = 0;
  std::string ToolTipText = "Double click to zoom in";
};

inline constexpr double SketchNormalLeft = 3870;

// Between the normal box and one that fills the form. The caller resizes its
// canvas to the box and runs Drawing again.
void ToggleSketchZoom(SketchBox& picParcel, double formWidth, double formHeight,
                      double normalWidth, double normalHeight);

}  // namespace parvenna
