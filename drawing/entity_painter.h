#pragma once

#include <cstdint>
#include <vector>

#include "drawing/drawing_document.h"
#include "platform/canvas.h"

// Paints entities on a Canvas at a scale. What is smaller than a pixel
// becomes one dot, drawn once per pixel, the first to fall in it; texts too
// small to read become the line they stand on; polylines drop points closer
// than half a pixel.
namespace parvenna::drawing {

// A part of a picture in its units: left <= x < right, top <= y < bottom.
struct PicturePart {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool Empty() const { return right <= left || bottom <= top; }
};

// Black or white, whichever stands out on the background.
Rgb ContrastOf(Rgb back);

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
  std::vector<std::uint64_t> dots;  // one bit per pixel of the part painted
  std::vector<std::uint64_t> seen;  // one bit per entity met by a window
};

class EntityPainter {
 public:
  // Dots fall in `part` of the picture, the whole canvas when empty; other
  // strokes go wherever they reach.
  EntityPainter(const DrawingDocument& document, Canvas& canvas, const PaintTransform& transform,
                Rgb back, int foreNumber, PaintScratch& scratch, PicturePart part = {});
  void Paint(const Entity& entity, bool marked);
  Rgb Contrast() const { return contrast_; }
  Rgb ColourOf(const Entity& entity, bool marked) const {
    const Rgb colour = marked ? markColour_ : override_ ? fore_ : entity.colour;
    // What would vanish on the background is drawn in its contrast, as white
    // entities show black on a white sheet.
    return colour == back_ ? contrast_ : colour;
  }

 private:
  void Dot(CanvasPoint p, Rgb colour);
  void PaintText(const Entity& entity, Rgb colour);
  void PaintHatch(const Entity& entity, Rgb colour);

  const DrawingDocument& doc_;
  Canvas& canvas_;
  PaintTransform t_;
  Rgb back_;
  Rgb contrast_;
  bool override_ = false;  // the fore colour paints every entity
  Rgb fore_{};
  Rgb markColour_;
  PaintScratch& scratch_;
  PicturePart part_;
  std::size_t partWidth_ = 0;
};

}  // namespace parvenna::drawing
