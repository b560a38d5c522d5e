#include "ui/line_raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define PARVENNA_PAIRS_IN_SSE2 1
#endif

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

// An opaque colour over the pixel at this coverage (0 to 255). The
// colour's alpha scaled by the coverage is the coverage itself.
inline void Over(std::uint32_t& pixel, std::uint32_t colour, int coverage) {
  if (coverage == 0) return;
  const auto c = static_cast<std::uint32_t>(coverage);
  pixel = Scale(colour, c) + Scale(pixel, 255 - c);
}

// An opaque colour over two pixels at their coverages, as Over does to each:
// the channels of both in the lanes of one register.
inline void OverPair(std::uint32_t& first, int firstCoverage, std::uint32_t& second,
                     int secondCoverage, std::uint32_t colour) {
#ifdef PARVENNA_PAIRS_IN_SSE2
  const __m128i zero = _mm_setzero_si128();
  const __m128i pixels = _mm_unpacklo_epi8(
      _mm_unpacklo_epi32(_mm_cvtsi32_si128(static_cast<int>(first)), _mm_cvtsi32_si128(static_cast<int>(second))),
      zero);
  const __m128i paint = _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(colour)), zero);
  const __m128i cover = _mm_unpacklo_epi64(_mm_set1_epi16(static_cast<short>(firstCoverage)),
                                           _mm_set1_epi16(static_cast<short>(secondCoverage)));
  const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), cover);
  // x * a / 255 rounded, per channel: (t + (t >> 8) + 128) >> 8.
  const auto scale = [](__m128i x, __m128i a) {
    const __m128i t = _mm_mullo_epi16(x, a);
    return _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(t, _mm_srli_epi16(t, 8)), _mm_set1_epi16(128)), 8);
  };
  const __m128i sum = _mm_add_epi16(scale(paint, cover), scale(pixels, rest));
  const __m128i packed = _mm_packus_epi16(sum, zero);
  first = static_cast<std::uint32_t>(_mm_cvtsi128_si32(packed));
  second = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(packed, 4)));
#else
  Over(first, colour, firstCoverage);
  Over(second, colour, secondCoverage);
#endif
}

// Beyond this many pixels from the picture, ends are brought to its edge.
constexpr double kFar = 1 << 24;

// In 1/64 of a pixel, rounded down: the raster engine's measure, which it
// takes by truncation, the same for every point of the picture.
inline std::int64_t Fixed(double v) { return static_cast<std::int64_t>(std::floor(v * 64)); }

}  // namespace

LineRaster::LineRaster(const Pixels& pixels, int pictureWidth, int pictureHeight)
    : pixels_(pixels.first), stride_(pixels.stride),
      offset_(-(static_cast<std::ptrdiff_t>(pixels.top) * pixels.stride + pixels.left)),
      width_(pictureWidth), height_(pictureHeight),
      clipX0_(std::max(0, pixels.left)), clipY0_(std::max(0, pixels.top)),
      clipX1_(std::min(pictureWidth, pixels.left + pixels.width)),
      clipY1_(std::min(pictureHeight, pixels.top + pixels.height)) {}

void LineRaster::Blend(int x, int y, int coverage) {
  if (x < clipX0_ || x >= clipX1_ || y < clipY0_ || y >= clipY1_) return;
  Over(pixels_[static_cast<std::ptrdiff_t>(y) * stride_ + x + offset_], colour_, coverage);
}

void LineRaster::Fill(std::uint32_t argb) {
  for (int y = clipY0_; y < clipY1_; ++y) {
    std::uint32_t* row = pixels_ + (static_cast<std::ptrdiff_t>(y) * stride_ + clipX0_ + offset_);
    std::fill(row, row + (clipX1_ - clipX0_), argb);
  }
}

void LineRaster::Dot(double x, double y) {
  const double fx = std::floor(x + 0.5), fy = std::floor(y + 0.5);
  if (!(fx >= clipX0_ && fx < clipX1_ && fy >= clipY0_ && fy < clipY1_)) return;
  pixels_[static_cast<std::ptrdiff_t>(fy) * stride_ + static_cast<std::ptrdiff_t>(fx) + offset_] = colour_;
}

namespace {

// Cuts a segment to low <= a <= high along one axis, b following along the
// other; false when nothing of it is left.
bool CutAlong(double& a1, double& b1, double& a2, double& b2, double low, double high) {
  if (a1 < low) {
    if (a2 <= low) return false;
    b1 += (b2 - b1) / (a2 - a1) * (low - a1);
    a1 = low;
  } else if (a1 > high) {
    if (a2 >= high) return false;
    b1 += (b2 - b1) / (a2 - a1) * (high - a1);
    a1 = high;
  }
  if (a2 < low) {
    b2 += (b2 - b1) / (a2 - a1) * (low - a2);
    a2 = low;
  } else if (a2 > high) {
    b2 += (b2 - b1) / (a2 - a1) * (high - a2);
    a2 = high;
  }
  return true;
}

}  // namespace

// Cut to the image grown by a pixel on each side, always against the whole
// image whatever pixels are held, so that a line crosses the pixels of a strip as
// it crosses them in the whole picture.
bool LineRaster::ClipToImage(double& x1, double& y1, double& x2, double& y2) const {
  return CutAlong(x1, y1, x2, y2, -1, width_ + 1) && CutAlong(y1, x1, y2, x2, -1, height_ + 1);
}

void LineRaster::Segment(double rx1, double ry1, double rx2, double ry2, int caps) {
  if (!(std::isfinite(rx1) && std::isfinite(ry1) && std::isfinite(rx2) && std::isfinite(ry2))) return;
  // Ends further away than fixed point holds are first brought to the
  // picture's edge. Nearer ones are followed from where they are, so that a
  // line crosses the pixels the same way wherever the picture is, and a
  // strip of a moved picture meets the rest.
  if (std::max({std::abs(rx1), std::abs(ry1), std::abs(rx2), std::abs(ry2)}) > kFar &&
      !ClipToImage(rx1, ry1, rx2, ry2)) {
    return;
  }
  // In 1/64 of a pixel.
  std::int64_t a1 = Fixed(rx1), m1 = Fixed(ry1), a2 = Fixed(rx2), m2 = Fixed(ry2);
  // a runs along the major axis, m across it.
  const bool steep = std::abs(a2 - a1) < std::abs(m2 - m1);
  if (steep) {
    std::swap(a1, m1);
    std::swap(a2, m2);
  }
  if (a1 == a2) return;
  // The centre's move across per pixel along, in 1/65536 of a pixel,
  // truncated. In a double, which divides faster and here exactly: the
  // quotient is never within its last digit of a whole number it is not.
  const auto inc = static_cast<std::int64_t>(static_cast<double>((m2 - m1) * 65536) /
                                             static_cast<double>(a2 - a1));
  if (a1 > a2) {
    std::swap(a1, a2);
    std::swap(m1, m2);
    caps = ((caps & CapStart) << 1) | ((caps & CapEnd) >> 1);
  }
  // The centre at the middle of the first step, half a pixel back so that
  // its whole part is the first of the two pixels it falls between.
  std::int64_t m = (m1 - 32) * 1024;
  m -= (((a1 & 63) - 32) * inc) >> 6;
  if (caps & CapStart) {
    a1 -= 32;
    m -= inc >> 1;
  }
  if (caps & CapEnd) a2 += 32;
  Run run{a1 >> 6, a2 >> 6, m, inc, 0, 0};
  if (run.first == run.last) {
    run.startPart = static_cast<int>(a2 - a1);
  } else {
    run.startPart = 64 - static_cast<int>(a1 & 63);
    run.endPart = static_cast<int>(a2 & 63);
  }

  // The steps among the pixels held, along the major axis.
  const std::int64_t from = std::max<std::int64_t>(run.first, steep ? clipY0_ : clipX0_);
  const std::int64_t end = run.endPart || run.first == run.last ? run.last + 1 : run.last;
  const std::int64_t to = std::min<std::int64_t>(end, steep ? clipY1_ : clipX1_);
  if (from >= to) return;
  const std::int64_t mFrom = run.centre + (from - run.first) * inc;
  const std::int64_t mTo = run.centre + (to - 1 - run.first) * inc;
  const std::int64_t low = std::min(mFrom, mTo) >> 16, high = (std::max(mFrom, mTo) >> 16) + 1;
  const bool inside = steep ? (low >= clipX0_ && high < clipX1_) : (low >= clipY0_ && high < clipY1_);
  if (inside) {
    Inside(run, from, to, steep ? stride_ : 1, steep ? 1 : stride_);
  } else if (steep) {
    Steps(run, from, to, [this](std::int64_t at, std::int64_t across, int nearPart, int farPart) {
      Blend(static_cast<int>(across), static_cast<int>(at), nearPart);
      Blend(static_cast<int>(across) + 1, static_cast<int>(at), farPart);
    });
  } else {
    Steps(run, from, to, [this](std::int64_t at, std::int64_t across, int nearPart, int farPart) {
      Blend(static_cast<int>(at), static_cast<int>(across), nearPart);
      Blend(static_cast<int>(at), static_cast<int>(across) + 1, farPart);
    });
  }
}

// Splits each step's part between the pixel the centre falls after and the
// one after it, by the centre's fraction.
template <class Put>
void LineRaster::Steps(const Run& run, std::int64_t from, std::int64_t to, Put&& put) {
  std::int64_t m = run.centre + (from - run.first) * run.inc;
  for (std::int64_t a = from; a < to; ++a, m += run.inc) {
    const int part = a == run.first ? run.startPart : a == run.last ? run.endPart : 64;
    const int f = static_cast<int>((m >> 8) & 0xFF);
    put(a, m >> 16, (255 - f) * part >> 6, f * part >> 6);
  }
}

void LineRaster::Inside(const Run& run, std::int64_t from, std::int64_t to, std::ptrdiff_t along,
                        std::ptrdiff_t across) {
  const std::uint32_t colour = colour_;
  std::uint32_t* const pixels = pixels_;
  const std::ptrdiff_t offset = offset_;
  Steps(run, from, to, [=](std::int64_t at, std::int64_t across0, int nearPart, int farPart) {
    std::uint32_t* p = pixels + (at * along + across0 * across + offset);
    OverPair(p[0], nearPart, p[across], farPart, colour);
  });
}

}  // namespace parvenna::ui
