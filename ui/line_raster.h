#pragma once

#include <cstddef>
#include <cstdint>

namespace parvenna::ui {

// Paints lines one pixel wide, antialiased, and dots straight into the pixels
// of a 32-bit image (premultiplied ARGB or RGB with an opaque alpha). The
// pixels are those that Qt's raster engine paints with an antialiased
// cosmetic pen of width 1 and square caps: the line's centre is followed in
// 1/64 of a pixel, each step along the major axis shares its colour between
// the two pixels that the centre falls between, and the first and last steps
// by the part of them the line covers. What it saves is the painter's cost
// per call, which on a county sheet is most of the frame. Unlike the painter
// it follows a line from its true ends rather than from where the picture's
// edge cuts it, so that lines across the edge come out the same wherever the
// picture stands (there the two may differ in the last shade of a pixel).
class LineRaster {
 public:
  enum Caps { NoCaps = 0, CapStart = 1, CapEnd = 2 };

  // Pixels held of a picture: from (left, top) of the picture, stride apart
  // from row to row.
  struct Pixels {
    std::uint32_t* first = nullptr;
    std::ptrdiff_t stride = 0;
    int left = 0, top = 0, width = 0, height = 0;
  };
  // Paints those pixels of a picture of this size: only they change, and
  // the lines keep the places they have in the whole picture.
  LineRaster(const Pixels& pixels, int pictureWidth, int pictureHeight);

  // An opaque colour, 0xAARRGGBB with alpha 255.
  void SetColour(std::uint32_t argb) { colour_ = argb; }

  // Every pixel held, in full colour: with plain stores, which
  // leave the pixels at hand for the lines that follow.
  void Fill(std::uint32_t argb);
  // The pixel nearest to the point, in full colour.
  void Dot(double x, double y);
  // A segment with half a pixel added at the capped ends. A polyline is
  // its segments, the first capped at its start and the last at its end
  // unless the polyline closes.
  void Segment(double x1, double y1, double x2, double y2, int caps);

 private:
  // The steps of a segment along its major axis: the first and the last
  // (painted only when endPart or the first), the centre across in 1/65536 of a pixel at
  // the first and its move per step, and how much of the end steps is
  // covered, in 1/64.
  struct Run {
    std::int64_t first, last, centre, inc;
    int startPart, endPart;
  };
  // Steps from <= a < to of a run.
  template <class Put>
  static void Steps(const Run& run, std::int64_t from, std::int64_t to, Put&& put);
  // Steps whose pixels are all held.
  void Inside(const Run& run, std::int64_t from, std::int64_t to, std::ptrdiff_t along,
              std::ptrdiff_t across);
  bool ClipToImage(double& x1, double& y1, double& x2, double& y2) const;
  void Blend(int x, int y, int coverage);

  // Pixel (x, y) of the picture is pixels_[y * stride_ + x + offset_].
  std::uint32_t* pixels_;
  std::ptrdiff_t stride_, offset_;
  int width_, height_;
  // The pixels held that lie within the picture: x0 <= x < x1, y0 <= y < y1.
  int clipX0_, clipY0_, clipX1_, clipY1_;
  std::uint32_t colour_ = 0xFF000000;
};

}  // namespace parvenna::ui
