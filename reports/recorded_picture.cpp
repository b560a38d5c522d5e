#include "reports/recorded_picture.h"

namespace parvenna::reports {

void RecordedPicture::PaintOn(Canvas& target) const {
  if (width_ <= 0 || height_ <= 0) return;
  const double sx = target.Width() / width_;
  const double sy = target.Height() / height_;
  for (const Stroke& s : strokes_) {
    switch (s.kind) {
      case Kind::Line:
        target.Line(s.a * sx, s.b * sy, s.c * sx, s.d * sy, s.colour);
        break;
      case Kind::Box:
        target.Box(s.a * sx, s.b * sy, s.c * sx, s.d * sy, s.colour);
        break;
      case Kind::Circle:
        target.Circle(s.a * sx, s.b * sy, s.c * sx, s.colour, s.start, s.end);
        break;
      case Kind::Text:
        target.Text(s.a * sx, s.b * sy, s.text, s.c * sy, s.d, s.colour);
        break;
    }
  }
}

}  // namespace parvenna::reports
