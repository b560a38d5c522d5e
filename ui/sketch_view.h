#pragma once

#include <array>
#include <functional>

#include <QLabel>
#include <QWidget>

#include "geometry/closure.h"
#include "ui/painter_canvas.h"

namespace parvenna::ui {

// The picture box of the sketch: shows what was painted on the canvas, with
// the course numbers lying on it. A double click is handed to onDoubleClick.
class SketchView : public QWidget {
 public:
  SketchView(const PainterCanvas& canvas, QWidget* parent);

  // Repaints when the canvas changed, and places the course numbers.
  void Mirror(const std::array<Label, CourseLimit>& lblLineNo);

  std::function<void()> onDoubleClick;
  QLabel* LineNumber(int row) const { return numbers_[static_cast<std::size_t>(row)]; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  struct NumberState {
    bool visible = false;
    int x = -1, y = -1;
    bool operator==(const NumberState&) const = default;
  };
  const PainterCanvas& canvas_;
  unsigned shownGeneration_ = ~0u;
  std::array<QLabel*, CourseLimit> numbers_{};
  std::array<NumberState, CourseLimit> shown_{};
};

}  // namespace parvenna::ui
