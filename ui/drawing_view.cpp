#include "ui/drawing_view.h"

#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QWheelEvent>

#include "ui/drawing_canvas.h"

namespace parvenna::ui {
namespace {

constexpr const char* kNoDrawing = "No drawing";
// A drawing with more entities than this waits for the mouse to come up
// before its overview follows a pan: the overview paints every entity.
constexpr std::size_t kLiveOverviewEntities = 50000;

drawing::MouseButton ButtonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton: return drawing::MouseButton::Left;
    case Qt::RightButton: return drawing::MouseButton::Right;
    default: return drawing::MouseButton::Middle;
  }
}

}  // namespace

DrawingView::DrawingView(drawing::ViewForm& form, int view, Runner run, QWidget* parent)
    : QWidget(parent), form_(form), view_(view), run_(std::move(run)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::WheelFocus);
  setMinimumSize(120, 90);
  band_ = new QRubberBand(QRubberBand::Rectangle, this);
  band_->hide();
}

bool DrawingView::Showing() const {
  return form_.ViewerVisible[static_cast<std::size_t>(view_)] && form_.View(view_).IsLoaded();
}

void DrawingView::Sync() {
  FollowCursor();
  if (!framed_ || form_.Generation(view_) != frameGeneration_ || Frame().size() != size() ||
      OverviewRect() != paintedInset_) {
    update();
  }
}

void DrawingView::FollowCursor() {
  Qt::CursorShape shape = Qt::ArrowCursor;
  if (Showing()) {
    if (form_.View(view_).AwaitingPart()) shape = Qt::CrossCursor;
    else if (form_.MousePointer == 99) shape = Qt::ClosedHandCursor;
    else if (form_.Grabbing()) shape = Qt::PointingHandCursor;
    else shape = Qt::OpenHandCursor;
  }
  if (cursor().shape() != shape) setCursor(shape);
}

QRect DrawingView::OverviewRect() const {
  if (!Showing() || !form_.OverviewVisible[static_cast<std::size_t>(view_)]) return {};
  if (width() < 320 || height() < 240) return {};
  const int w = std::clamp(width() / 6, 120, 220);
  const int h = w * 3 / 4;
  constexpr int margin = 8;
  return {width() - w - margin, height() - h - margin, w, h};
}

void DrawingView::PaintFrame() {
  frame_.Update(form_.View(view_), size());
  frameGeneration_ = form_.Generation(view_);
  framed_ = true;
  ++framesPainted_;
}

void DrawingView::PaintOverview(const QRect& rect) {
  const drawing::DrawingDocument* doc = form_.View(view_).Document();
  const bool live = doc && doc->entities.size() <= kLiveOverviewEntities;
  const bool stale = !overviewed_ || overviewGeneration_ != form_.Generation(view_) ||
                     overview_.size() != rect.size();
  if (stale && (live || QApplication::mouseButtons() == Qt::NoButton || !overviewed_)) {
    if (overview_.size() != rect.size()) overview_ = QImage(rect.size(), QImage::Format_RGB32);
    QPainter painter(&overview_);
    DrawingCanvas canvas(painter, rect.width(), rect.height());
    form_.View(view_).RenderOverview(canvas);
    overviewGeneration_ = form_.Generation(view_);
    overviewed_ = true;
  }
}

void DrawingView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!Showing()) {
    framed_ = false;
    painter.fillRect(rect(), palette().window());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter, kNoDrawing);
    return;
  }
  if (!framed_ || frameGeneration_ != form_.Generation(view_) || Frame().size() != size()) {
    PaintFrame();
  }
  painter.drawImage(0, 0, Frame());
  const QRect inset = OverviewRect();
  paintedInset_ = inset;
  if (inset.isEmpty()) return;
  PaintOverview(inset);
  painter.drawImage(inset.topLeft(), overview_);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  painter.drawRect(inset.adjusted(0, 0, -1, -1));
}

void DrawingView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  run_([&] { form_.View_Resize(view_, width(), height()); });
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const QRect inset = OverviewRect();
  if (inset.contains(at.toPoint())) {
    if (event->button() != Qt::LeftButton) return;
    const QPointF within = at - inset.topLeft();
    run_([&] { form_.Overview_Click(view_, within.x(), within.y(), inset.width(), inset.height()); });
    return;
  }
  if (Showing() && form_.View(view_).AwaitingPart()) {
    bandFrom_ = at.toPoint();
    band_->setGeometry(QRect(bandFrom_, QSize()));
    band_->show();
  }
  run_([&] { form_.View_MouseDown(view_, ButtonOf(event->button()), at.x(), at.y()); });
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (band_->isVisible()) band_->setGeometry(QRect(bandFrom_, at.toPoint()).normalized());
  const bool held = event->buttons() != Qt::NoButton;
  // Moves without a button change nothing but the cursor.
  if (!held) {
    FollowCursor();
    return;
  }
  run_([&] { form_.View_MouseMove(view_, held, at.x(), at.y()); });
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  band_->hide();
  run_([&] { form_.View_MouseUp(view_, at.x(), at.y()); });
}

void DrawingView::wheelEvent(QWheelEvent* event) {
  const QPointF at = event->position();
  const int delta = event->angleDelta().y();
  if (delta == 0) return;
  run_([&] { form_.MouseWheel1_Scroll(delta, at.x(), at.y()); });
  event->accept();
}

}  // namespace parvenna::ui
