#include "ui/drawing_frame.h"

#include <QPainter>

#include "ui/drawing_canvas.h"

namespace parvenna::ui {

void DrawingFrame::Paint(drawing::Viewer& viewer, QSize size) {
  if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
  QPainter painter(&image_);
  DrawingCanvas canvas(painter, size.width(), size.height());
  viewer.Render(canvas);
}

void DrawingFrame::Update(drawing::Viewer& viewer, QSize size) { Paint(viewer, size); }

}  // namespace parvenna::ui
