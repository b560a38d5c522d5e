#pragma once

#include <algorithm>
#include <limits>

// Points and boxes in drawing units (x east, y north).
namespace parvenna::drawing {

struct Point {
  double x = 0;
  double y = 0;
};

struct Box {
  double minX = std::numeric_limits<double>::infinity();
  double minY = std::numeric_limits<double>::infinity();
  double maxX = -std::numeric_limits<double>::infinity();
  double maxY = -std::numeric_limits<double>::infinity();

  static Box Of(double x1, double y1, double x2, double y2) {
    return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
  }
  bool Empty() const { return !(minX <= maxX && minY <= maxY); }
  double Width() const { return Empty() ? 0 : maxX - minX; }
  double Height() const { return Empty() ? 0 : maxY - minY; }
  Point Centre() const { return {(minX + maxX) / 2, (minY + maxY) / 2}; }

  void Add(Point p) {
    minX = std::min(minX, p.x);
    minY = std::min(minY, p.y);
    maxX = std::max(maxX, p.x);
    maxY = std::max(maxY, p.y);
  }
  void Add(const Box& b) {
    if (b.Empty()) return;
    minX = std::min(minX, b.minX);
    minY = std::min(minY, b.minY);
    maxX = std::max(maxX, b.maxX);
    maxY = std::max(maxY, b.maxY);
  }
  bool Intersects(const Box& b) const {
    return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY;
  }
  bool Contains(Point p) const { return minX <= p.x && p.x <= maxX && minY <= p.y && p.y <= maxY; }
  Box Inflated(double d) const { return {minX - d, minY - d, maxX + d, maxY + d}; }
};

}  // namespace parvenna::drawing
