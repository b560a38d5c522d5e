#pragma once

#include <QImage>

#include "drawing/viewer.h"

namespace parvenna::ui {

// The picture of one view, kept between paints: what a drawing view shows
// and what the drawing benchmark measures. A pan by whole pixels moves the
// picture it has and paints only the strips that came into view, which are
// pixel for pixel what a whole new picture would have there.
class DrawingFrame {
 public:
  // Paints the whole picture afresh.
  void Paint(drawing::Viewer& viewer, QSize size);
  // Brings the picture up to date after a change of the view.
  void Update(drawing::Viewer& viewer, QSize size);
  const QImage& Image() const { return image_; }
  // Whether the last Update moved the picture rather than painting it all.
  bool LastMoved() const { return lastMoved_; }

 private:
  // Moves the pixels by (dx, dy), leaving those that came into view as
  // they were.
  void Scroll(int dx, int dy);
  void Remember(const drawing::Viewer& viewer);

  QImage image_;
  drawing::PaintScratch scratch_;
  bool painted_ = false;
  bool lastMoved_ = false;
  // The view as the picture shows it.
  unsigned look_ = 0;
  drawing::PaintTransform transform_;
};

}  // namespace parvenna::ui
