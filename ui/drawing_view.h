#pragma once

#include <functional>

#include <QImage>
#include <QWidget>

#include "drawing/view_form.h"
#include "ui/drawing_frame.h"

class QRubberBand;

namespace parvenna::ui {

// One view of the drawing window: paints its Viewer at the widget's size and
// hands the mouse to the form in pixels. The frame is painted again only
// when the form's generation of the view moved or the size changed; the
// overview in the lower right corner shows the whole drawing with the
// window as a rectangle, and a click on it moves the window there.
class DrawingView : public QWidget {
 public:
  // `run` runs a handler of the form the way the window runs all of them.
  using Runner = std::function<void(const std::function<void()>&)>;
  DrawingView(drawing::ViewForm& form, int view, Runner run, QWidget* parent = nullptr);

  // Asks for a repaint when the form's view differs from the last frame.
  void Sync();
  // The last frame painted, and how many were painted.
  const QImage& Frame() const { return frame_.Image(); }
  int FramesPainted() const { return framesPainted_; }
  // The overview's place in the widget; empty while it does not show.
  QRect OverviewRect() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool Showing() const;
  void PaintFrame();
  void PaintOverview(const QRect& rect);
  void FollowCursor();

  drawing::ViewForm& form_;
  int view_;
  Runner run_;
  DrawingFrame frame_;
  QImage overview_;
  unsigned frameGeneration_ = 0;
  unsigned overviewGeneration_ = 0;
  bool framed_ = false;
  bool overviewed_ = false;
  QRect paintedInset_;  // where the last paint put the overview
  int framesPainted_ = 0;
  QRubberBand* band_ = nullptr;
  QPoint bandFrom_;
};

}  // namespace parvenna::ui
