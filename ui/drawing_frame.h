#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include <QImage>

#include "drawing/viewer.h"

namespace parvenna::ui {

class PaintWorkers;

// The picture of one view, kept between paints: what a drawing view shows
// and what the drawing benchmark measures. A frame of many entities is
// painted in bands of rows at once, one a thread, from the view, which does
// not change meanwhile. A pan by whole pixels moves the
// picture it has and paints only the strips that came into view, which are
// what a whole new picture would have there.
class DrawingFrame {
 public:
  // Frames of more entities than this have their bands painted at once.
  static constexpr std::size_t kManyEntities = 20000;

  explicit DrawingFrame(std::size_t bandsFrom = kManyEntities);
  ~DrawingFrame();
  DrawingFrame(const DrawingFrame&) = delete;
  DrawingFrame& operator=(const DrawingFrame&) = delete;

  // Paints the whole picture afresh.
  void Paint(drawing::Viewer& viewer, QSize size);
  // Brings the picture up to date after a change of the view.
  void Update(drawing::Viewer& viewer, QSize size);
  const QImage& Image() const { return image_; }
  // Whether the last Update moved the picture rather than painting it all.
  bool LastMoved() const { return lastMoved_; }
  // The entities the last Paint or Update painted (those across bands once
  // for each).
  std::size_t LastEntities() const { return lastEntities_; }

 private:
  // Clears each part to the back colour and paints what meets it.
  void PaintParts(const drawing::Viewer& viewer, std::span<const drawing::PicturePart> parts);
  // Moves the pixels by (dx, dy), leaving those that came into view as
  // they were.
  void Scroll(int dx, int dy);
  void Remember(const drawing::Viewer& viewer);

  QImage image_;
  std::size_t bandsFrom_;
  std::unique_ptr<PaintWorkers> workers_;  // made for the first frame of many entities
  std::vector<drawing::PaintScratch> scratch_;  // one for each thread
  bool painted_ = false;
  bool lastMoved_ = false;
  std::size_t lastEntities_ = 0;
  // The view as the picture shows it.
  unsigned look_ = 0;
  drawing::PaintTransform transform_;
};

}  // namespace parvenna::ui
