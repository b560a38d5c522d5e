#include "ui/drawing_frame.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include <QPainter>

#include "ui/drawing_canvas.h"

namespace parvenna::ui {
namespace {

// A move is by whole pixels when it is this near to them.
constexpr double kWholePixel = 1e-3;
// Scales that differ by no more than this part are one scale: a pan moves
// the window by drawing units, which may touch the last digit of its width.
constexpr double kSameScale = 1e-9;

}  // namespace

void DrawingFrame::Remember(const drawing::Viewer& viewer) {
  look_ = viewer.Look();
  transform_ = viewer.CurrentTransform();
  painted_ = true;
}

void DrawingFrame::Paint(drawing::Viewer& viewer, QSize size) {
  if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
  {
    QPainter painter(&image_);
    DrawingCanvas canvas(painter, size.width(), size.height());
    viewer.Render(canvas);
  }
  Remember(viewer);
  lastMoved_ = false;
}

void DrawingFrame::Update(drawing::Viewer& viewer, QSize size) {
  viewer.SetViewport(size.width(), size.height());
  const drawing::PaintTransform now = viewer.CurrentTransform();
  const double sx = (transform_.ox - now.ox) * now.scale, sy = (now.oy - transform_.oy) * now.scale;
  const double dx = std::round(sx), dy = std::round(sy);
  const bool moved = painted_ && image_.size() == size && viewer.Look() == look_ &&
                     std::abs(now.scale - transform_.scale) <= kSameScale * now.scale &&
                     std::abs(sx - dx) < kWholePixel && std::abs(sy - dy) < kWholePixel &&
                     std::abs(dx) < size.width() && std::abs(dy) < size.height();
  if (!moved) {
    Paint(viewer, size);
    return;
  }
  const int mx = static_cast<int>(dx), my = static_cast<int>(dy);
  const int w = size.width(), h = size.height();
  Scroll(mx, my);
  // The columns that came into view at full height, then the rows beside them.
  std::vector<drawing::PicturePart> parts;
  if (mx > 0) parts.push_back({0, 0, mx, h});
  if (mx < 0) parts.push_back({w + mx, 0, w, h});
  const int left = mx > 0 ? mx : 0, right = mx < 0 ? w + mx : w;
  if (my > 0) parts.push_back({left, 0, right, my});
  if (my < 0) parts.push_back({left, h + my, right, h});
  {
    QPainter painter(&image_);
    DrawingCanvas canvas(painter, w, h);
    for (const drawing::PicturePart& part : parts) {
      if (part.Empty()) continue;
      canvas.SetClip(QRect(part.left, part.top, part.right - part.left, part.bottom - part.top));
      canvas.Clear(viewer.BackColour());
      viewer.RenderPart(canvas, part, scratch_);
    }
  }
  Remember(viewer);
  lastMoved_ = true;
}

void DrawingFrame::Scroll(int dx, int dy) {
  const int w = image_.width(), h = image_.height();
  const std::size_t keep = static_cast<std::size_t>(w - std::abs(dx)) * 4;
  const int from = dx > 0 ? 0 : -dx, to = dx > 0 ? dx : 0;
  const auto move = [&](int y) {
    const auto* source = image_.constScanLine(y - dy);
    std::memmove(image_.scanLine(y) + to * 4, source + from * 4, keep);
  };
  // Rows are moved so that none is overwritten before it is read.
  if (dy > 0) {
    for (int y = h - 1; y >= dy; --y) move(y);
  } else {
    for (int y = 0; y < h + dy; ++y) move(y);
  }
}

}  // namespace parvenna::ui
