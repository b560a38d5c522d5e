#pragma once

#include <algorithm>
#include <cstdlib>

#include <QImage>
#include <QRect>

// How two pictures of the same size differ, pixel by pixel.
namespace parvenna::ui::testing {

struct Difference {
  int pixels = 0;   // that differ at all
  int largest = 0;  // the largest difference of a channel, 0 to 255
  int marked = 0;   // that differ by more than 32 in a channel
};

// Over the whole picture when area is empty.
inline Difference Compare(const QImage& a, const QImage& b, QRect area = {}) {
  if (area.isEmpty()) area = a.rect();
  Difference d;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      if (p == q) continue;
      ++d.pixels;
      const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                 std::abs(qBlue(p) - qBlue(q))});
      d.largest = std::max(d.largest, most);
      d.marked += most > 32;
    }
  }
  return d;
}

}  // namespace parvenna::ui::testing
