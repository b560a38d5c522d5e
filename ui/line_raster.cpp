#include "ui/line_raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace parvenna::ui {
namespace {

// Each channel of a premultiplied pixel times a / 255, rounded.
inline std::uint32_t Scale(std::uint32_t x, std::uint32_t a) {
  std::uint32_t t = (x & 0xFF00FF) * a;
  t = ((t + ((t >> 8) & 0xFF00FF) + 0x800080) >> 8) & 0xFF00FF;
  x = ((x >> 8) & 0xFF00FF) * a;
  x = (x + ((x >> 8) & 0xFF00FF) + 0x800080) & 0xFF00FF00;
  return x | t;
}

// The colour over the pixel at this coverage (0 to 255).
inline void Over(std::uint32_t& pixel, std::uint32_t colour, int coverage) {
  const std::uint32_t c = Scale(colour, static_cast<std::uint32_t>(coverage));
  pixel = c + Scale(pixel, 255 - (c >> 24));
}

}  // namespace

LineRaster::LineRaster(std::uint32_t* pixels, std::ptrdiff_t stride, int width, int height)
    : pixels_(pixels), stride_(stride), width_(width), height_(height), clipX1_(width),
      clipY1_(height) {}

void LineRaster::SetClip(int x0, int y0, int x1, int y1) {
  clipX0_ = std::max(0, x0);
  clipY0_ = std::max(0, y0);
  clipX1_ = std::min(width_, x1);
  clipY1_ = std::min(height_, y1);
}

void LineRaster::Blend(int x, int y, int coverage) {
  if (x < clipX0_ || x >= clipX1_ || y < clipY0_ || y >= clipY1_) return;
  Over(pixels_[static_cast<std::ptrdiff_t>(y) * stride_ + x], colour_, coverage);
}

void LineRaster::Dot(double x, double y) {
  const double fx = std::floor(x + 0.5), fy = std::floor(y + 0.5);
  if (!(fx >= clipX0_ && fx < clipX1_ && fy >= clipY0_ && fy < clipY1_)) return;
  pixels_[static_cast<std::ptrdiff_t>(fy) * stride_ + static_cast<std::ptrdiff_t>(fx)] = colour_;
}

// Cut to the image grown by a pixel on each side, always against the whole
// image whatever the clip, so that a line crosses the pixels of a strip as
// it crosses them in the whole picture.
bool LineRaster::ClipToImage(double& x1, double& y1, double& x2, double& y2) const {
  const double minX = -1, maxX = width_ + 1, minY = -1, maxY = height_ + 1;
  if (x1 < minX) {
    if (x2 <= minX) return false;
    y1 += (y2 - y1) / (x2 - x1) * (minX - x1);
    x1 = minX;
  } else if (x1 > maxX) {
    if (x2 >= maxX) return false;
    y1 += (y2 - y1) / (x2 - x1) * (maxX - x1);
    x1 = maxX;
  }
  if (x2 < minX) {
    y2 += (y2 - y1) / (x2 - x1) * (minX - x2);
    x2 = minX;
  } else if (x2 > maxX) {
    y2 += (y2 - y1) / (x2 - x1) * (maxX - x2);
    x2 = maxX;
  }
  if (y1 < minY) {
    if (y2 <= minY) return false;
    x1 += (x2 - x1) / (y2 - y1) * (minY - y1);
    y1 = minY;
  } else if (y1 > maxY) {
    if (y2 >= maxY) return false;
    x1 += (x2 - x1) / (y2 - y1) * (maxY - y1);
    y1 = maxY;
  }
  if (y2 < minY) {
    x2 += (x2 - x1) / (y2 - y1) * (minY - y2);
    y2 = minY;
  } else if (y2 > maxY) {
    x2 += (x2 - x1) / (y2 - y1) * (maxY - y2);
    y2 = maxY;
  }
  return true;
}

void LineRaster::Segment(double rx1, double ry1, double rx2, double ry2, int caps) {
  if (!ClipToImage(rx1, ry1, rx2, ry2)) return;
  // In 1/64 of a pixel, truncated as the raster engine truncates.
  std::int64_t a1 = static_cast<int>(rx1 * 64), m1 = static_cast<int>(ry1 * 64);
  std::int64_t a2 = static_cast<int>(rx2 * 64), m2 = static_cast<int>(ry2 * 64);
  // a runs along the major axis, m across it.
  const bool steep = std::abs(a2 - a1) < std::abs(m2 - m1);
  if (steep) {
    std::swap(a1, m1);
    std::swap(a2, m2);
  }
  if (a1 == a2) return;
  // The centre's move across per pixel along, in 1/65536 of a pixel.
  const std::int64_t inc = ((m2 - m1) << 16) / (a2 - a1);
  if (a1 > a2) {
    std::swap(a1, a2);
    std::swap(m1, m2);
    caps = ((caps & CapStart) << 1) | ((caps & CapEnd) >> 1);
  }
  // The centre at the middle of the first step, half a pixel back so that
  // its whole part is the first of the two pixels it falls between.
  std::int64_t m = (m1 - 32) << 10;
  m -= (((a1 & 63) - 32) * inc) >> 6;
  if (caps & CapStart) {
    a1 -= 32;
    m -= inc >> 1;
  }
  if (caps & CapEnd) a2 += 32;
  std::int64_t a = a1 >> 6;
  const std::int64_t last = a2 >> 6;
  int startPart = 0, endPart = 0;  // in 1/64 of the step
  if (a == last) {
    startPart = static_cast<int>(a2 - a1);
  } else {
    startPart = 64 - static_cast<int>(a1 & 63);
    endPart = static_cast<int>(a2 & 63);
  }

  const std::int64_t mLast = m + (last - a) * inc;
  const std::int64_t low = std::min(m, mLast) >> 16, high = (std::max(m, mLast) >> 16) + 1;
  const bool inside = steep ? (low >= clipX0_ && high < clipX1_ && a >= clipY0_ && last < clipY1_)
                            : (low >= clipY0_ && high < clipY1_ && a >= clipX0_ && last < clipX1_);
  const Run run{a, last, m, inc, startPart, endPart};
  if (inside) {
    Inside(run, steep ? stride_ : 1, steep ? 1 : stride_);
  } else if (steep) {
    Clipped(run, [this](std::int64_t at, std::int64_t across, int c) {
      Blend(static_cast<int>(across), static_cast<int>(at), c);
    });
  } else {
    Clipped(run, [this](std::int64_t at, std::int64_t across, int c) {
      Blend(static_cast<int>(at), static_cast<int>(across), c);
    });
  }
}

// Splits each step's part between the pixel the centre falls after and the
// one after it, by the centre's fraction.
template <class Put>
void LineRaster::Steps(const Run& run, Put&& put) {
  std::int64_t a = run.first, m = run.centre;
  const auto step = [&](int part) {
    const int f = static_cast<int>((m >> 8) & 0xFF);
    put(a, m >> 16, (255 - f) * part >> 6, f * part >> 6);
  };
  step(run.startPart);
  m += run.inc;
  for (++a; a < run.last; ++a, m += run.inc) step(64);
  if (run.endPart) step(run.endPart);
}

void LineRaster::Inside(const Run& run, std::ptrdiff_t along, std::ptrdiff_t across) {
  const std::uint32_t colour = colour_;
  std::uint32_t* const pixels = pixels_;
  Steps(run, [=](std::int64_t at, std::int64_t across0, int nearPart, int farPart) {
    std::uint32_t* p = pixels + at * along + across0 * across;
    Over(p[0], colour, nearPart);
    Over(p[across], colour, farPart);
  });
}

template <class Blend2>
void LineRaster::Clipped(const Run& run, Blend2&& blend) {
  Steps(run, [&](std::int64_t at, std::int64_t across0, int nearPart, int farPart) {
    blend(at, across0, nearPart);
    blend(at, across0 + 1, farPart);
  });
}

}  // namespace parvenna::ui
