#pragma once

#include <cstdint>
#include <vector>

#include "drawing/drawing_document.h"
#include "platform/canvas.h"

// Paints entities on a Canvas at a scale. What is smaller than a pixel
// becomes one dot, drawn once per pixel; texts too small to read become the
// line they stand on; polylines drop points closer than half a pixel.
namespace parvenna::drawing {

struct PaintTransform {
  double ox = 0, oy = 0;  // the drawing point at the picture's lower left
  double scale = 1;       // picture units per drawing unit
  double height = 0;      // of the picture
  CanvasPoint To(Point p) const { return {(p.x - ox) * scale, height - (p.y - oy) * scale}; }
};

// Reused from frame to frame so that painting allocates nothing.
struct PaintScratch {
  std::vector<CanvasPoint> points;
  std::vector<std::size_t> ringEnds;
  std::vector<std::uint64_t> dots;  // one bit per pixel of the picture
};

class EntityPainter {
 public:
  EntityPainter(const DrawingDocument& document, Canvas& canvas, const PaintTransform& transform,
                Rgb back, int foreNumber, PaintScratch& scratch);
  void Paint(const Entity& entity, bool marked);
  // Black or white, whichever stands out on the background.
  Rgb Contrast() const;
  Rgb ColourOf(const Entity& entity, bool marked) const;

 private:
  void Dot(CanvasPoint p, Rgb colour);
  void PaintText(const Entity& entity, Rgb colour);
  void PaintHatch(const Entity& entity, Rgb colour);

  const DrawingDocument& doc_;
  Canvas& canvas_;
  PaintTransform t_;
  Rgb back_;
  int foreNumber_;
  PaintScratch& scratch_;
  int width_ = 0, height_ = 0;
};

}  // namespace parvenna::drawing
