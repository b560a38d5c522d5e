#include "ui/sketch_view.h"

#include <QMouseEvent>
#include <QPainter>

#include "ui/control_colours.h"
#include "ui/twips.h"

namespace parvenna::ui {

namespace {
// A course number is 180 twips wide on the form; the text is centred there.
constexpr double kNumberWidth = 180;
}  // namespace

SketchView::SketchView(const PainterCanvas& canvas, QWidget* parent)
    : QWidget(parent), canvas_(canvas) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  // A white picture: its course numbers are black whatever the desktop's colours.
  SetControlColours(this, Surface::Face, colours::White);
  QFont small = font();
  small.setPointSizeF(font().pointSizeF() * 0.85);
  for (int i = 0; i < CourseLimit; ++i) {
    auto* label = new QLabel(QString::number(i + 1), this);
    label->setFont(small);
    label->setAlignment(Qt::AlignCenter);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->adjustSize();
    label->resize(std::max(label->width(), Px(kNumberWidth)), label->height());
    label->hide();
    numbers_[static_cast<std::size_t>(i)] = label;
  }
}

void SketchView::Mirror(const std::array<Label, CourseLimit>& lblLineNo) {
  if (canvas_.Generation() != shownGeneration_) {
    shownGeneration_ = canvas_.Generation();
    update();
  }
  for (std::size_t i = 0; i < lblLineNo.size(); ++i) {
    const NumberState now{lblLineNo[i].Visible, Px(lblLineNo[i].Left), Px(lblLineNo[i].Top)};
    if (now == shown_[i]) continue;
    shown_[i] = now;
    // Left and Top name the label's corner, as on the form.
    numbers_[i]->move(now.x, now.y);
    numbers_[i]->setVisible(now.visible);
  }
}

void SketchView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  p.drawImage(QPoint(0, 0), canvas_.Image());
}

void SketchView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && onDoubleClick) onDoubleClick();
}

}  // namespace parvenna::ui
