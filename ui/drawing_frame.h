#pragma once

#include <QImage>

#include "drawing/viewer.h"

namespace parvenna::ui {

// The picture of one view, kept between paints: what a drawing view shows
// and what the drawing benchmark measures. Paint brings it up to date with
// the viewer at a size.
class DrawingFrame {
 public:
  // Paints the whole picture afresh.
  void Paint(drawing::Viewer& viewer, QSize size);
  // Brings the picture up to date after a change of the view.
  void Update(drawing::Viewer& viewer, QSize size);
  const QImage& Image() const { return image_; }

 private:
  QImage image_;
};

}  // namespace parvenna::ui
