#include "ui/drawing_frame.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include <QPainter>

#include "ui/drawing_canvas.h"
#include "ui/paint_workers.h"

namespace parvenna::ui {
namespace {

// A move is by whole pixels when it is this near to them.
constexpr double kWholePixel = 1e-3;
// Scales that differ by no more than this part are one scale: a pan moves
// the window by drawing units, which may touch the last digit of its width.
constexpr double kSameScale = 1e-9;

}  // namespace

DrawingFrame::DrawingFrame(std::size_t bandsFrom) : bandsFrom_(bandsFrom), scratch_(1) {}
DrawingFrame::~DrawingFrame() = default;

void DrawingFrame::Remember(const drawing::Viewer& viewer) {
  look_ = viewer.Look();
  transform_ = viewer.CurrentTransform();
  painted_ = true;
}

void DrawingFrame::PaintParts(const drawing::Viewer& viewer,
                              std::span<const drawing::PicturePart> parts) {
  lastEntities_ = 0;
  // The pixels are this image's alone before any thread paints into them.
  uchar* const bits = image_.bits();
  const qsizetype stride = image_.bytesPerLine();
  const int width = image_.width(), height = image_.height();
  const Rgb back = viewer.BackColour();
  for (const drawing::PicturePart& part : parts) {
    if (part.Empty()) continue;
    // A part of many entities is painted in bands of rows, one a thread.
    std::vector<drawing::PicturePart> bands{part};
    const bool many = viewer.EntitiesAbout(part) > bandsFrom_;
    if (many) {
      if (!workers_) {
        workers_ = std::make_unique<PaintWorkers>();
        scratch_.resize(static_cast<std::size_t>(workers_->Width()));
      }
      const int count = std::min(workers_->Width(), part.bottom - part.top);
      bands.clear();
      for (int i = 0; i < count; ++i) {
        const int rows = part.bottom - part.top;
        bands.push_back({part.left, part.top + rows * i / count, part.right, part.top + rows * (i + 1) / count});
      }
    }
    std::vector<std::size_t> painted(bands.size());
    const auto paint = [&](int job, int worker) {
      const drawing::PicturePart& b = bands[static_cast<std::size_t>(job)];
      // The band's rows of the picture, painted in the picture's coordinates.
      QImage rows(bits + b.top * stride + b.left * 4, b.right - b.left, b.bottom - b.top, stride,
                  image_.format());
      QPainter painter(&rows);
      painter.translate(-b.left, -b.top);
      DrawingCanvas canvas(painter, width, height);
      if (many) canvas.ClearForStrokes(back);
      else canvas.Clear(back);
      painted[static_cast<std::size_t>(job)] =
          viewer.RenderPart(canvas, b, scratch_[static_cast<std::size_t>(worker)]);
    };
    if (bands.size() > 1) workers_->Run(static_cast<int>(bands.size()), paint);
    else paint(0, 0);
    for (const std::size_t n : painted) lastEntities_ += n;
  }
}

void DrawingFrame::Paint(drawing::Viewer& viewer, QSize size) {
  viewer.SetViewport(size.width(), size.height());
  if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
  const drawing::PicturePart whole{0, 0, size.width(), size.height()};
  PaintParts(viewer, {&whole, 1});
  {
    QPainter painter(&image_);
    DrawingCanvas canvas(painter, size.width(), size.height());
    viewer.RenderRubberBand(canvas);
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
  PaintParts(viewer, parts);
  Remember(viewer);
  lastMoved_ = true;
}

void DrawingFrame::Scroll(int dx, int dy) {
  const int w = image_.width(), h = image_.height();
  const std::size_t keep = static_cast<std::size_t>(w - std::abs(dx)) * 4;
  const int from = dx > 0 ? 0 : -dx, to = dx > 0 ? dx : 0;
  uchar* const bits = image_.bits();
  const qsizetype stride = image_.bytesPerLine();
  const auto move = [&](int y) {
    std::memmove(bits + y * stride + to * 4, bits + (y - dy) * stride + from * 4, keep);
  };
  // Rows are moved so that none is overwritten before it is read.
  if (dy > 0) {
    for (int y = h - 1; y >= dy; --y) move(y);
  } else {
    for (int y = 0; y < h + dy; ++y) move(y);
  }
}

}  // namespace parvenna::ui
