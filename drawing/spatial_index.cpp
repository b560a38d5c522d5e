#include "drawing/spatial_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace parvenna::drawing {
namespace {

int Clamp(double v, int hi) {
  if (!(v > 0)) return 0;
  if (v >= hi) return hi;
  return static_cast<int>(v);
}

}  // namespace

void SpatialIndex::Clear() {
  levels_.clear();
  starts_.clear();
  items_.clear();
  extent_ = {};
}

void SpatialIndex::CellRange(const Level& level, const Box& box, int& x0, int& y0, int& x1,
                             int& y1) const {
  x0 = Clamp(std::floor((box.minX - extent_.minX) / level.cell), level.nx - 1);
  x1 = Clamp(std::floor((box.maxX - extent_.minX) / level.cell), level.nx - 1);
  y0 = Clamp(std::floor((box.minY - extent_.minY) / level.cell), level.ny - 1);
  y1 = Clamp(std::floor((box.maxY - extent_.minY) / level.cell), level.ny - 1);
}

void SpatialIndex::Build(const std::vector<Entity>& entities, const Box& extent) {
  Clear();
  if (entities.empty() || extent.Empty()) return;
  extent_ = extent;
  const double w = std::max(extent.Width(), 1e-9), h = std::max(extent.Height(), 1e-9);
  if (!std::isfinite(w) || !std::isfinite(h) || !std::isfinite(w * h)) {
    // Coordinates too far apart to grid: one cell holds everything.
    levels_.push_back({std::numeric_limits<double>::infinity(), 1, 1, 0});
    starts_ = {0, static_cast<std::uint32_t>(entities.size())};
    items_.resize(entities.size());
    for (std::size_t i = 0; i < entities.size(); ++i) items_[i] = static_cast<std::uint32_t>(i);
    return;
  }
  // About four entities to a cell of the finest grid, at most 1024 cells a side.
  const double cells = std::clamp(static_cast<double>(entities.size()) / 4, 1.0, 1024.0 * 1024.0);
  double base = std::sqrt(w * h / cells);
  base = std::max({base, w / 1024, h / 1024});
  for (double cell = base;; cell *= 2) {
    Level level;
    level.cell = cell;
    level.nx = std::max(1, static_cast<int>(std::ceil(w / cell)));
    level.ny = std::max(1, static_cast<int>(std::ceil(h / cell)));
    level.firstCell = levels_.empty() ? 0
                                      : levels_.back().firstCell +
                                            static_cast<std::size_t>(levels_.back().nx) * levels_.back().ny;
    levels_.push_back(level);
    if (level.nx == 1 && level.ny == 1 && cell >= std::max(w, h)) break;
  }
  const std::size_t totalCells =
      levels_.back().firstCell + static_cast<std::size_t>(levels_.back().nx) * levels_.back().ny;

  // Counting sort of the entities by their cell.
  std::vector<std::uint32_t> cellOf(entities.size());
  starts_.assign(totalCells + 1, 0);
  for (std::size_t i = 0; i < entities.size(); ++i) {
    const Box& b = entities[i].bounds;
    const double size = std::max(b.Width(), b.Height());
    std::size_t l = 0;
    while (l + 1 < levels_.size() && levels_[l].cell < size) ++l;
    const Level& level = levels_[l];
    const Point c = b.Centre();
    const int x = Clamp(std::floor((c.x - extent.minX) / level.cell), level.nx - 1);
    const int y = Clamp(std::floor((c.y - extent.minY) / level.cell), level.ny - 1);
    const std::size_t cell = level.firstCell + static_cast<std::size_t>(y) * level.nx + x;
    cellOf[i] = static_cast<std::uint32_t>(cell);
    ++starts_[cell + 1];
  }
  for (std::size_t c = 0; c < totalCells; ++c) starts_[c + 1] += starts_[c];
  items_.resize(entities.size());
  std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
  for (std::size_t i = 0; i < entities.size(); ++i) items_[next[cellOf[i]]++] = static_cast<std::uint32_t>(i);
}

double SpatialIndex::ShareOf(const Box& window) const {
  if (extent_.Empty() || window.Empty() || !window.Intersects(extent_)) return 0;
  // Along one axis; an extent of no width is covered whole once met.
  const auto share = [](double low, double high, double from, double to) {
    if (!(to > from)) return 1.0;
    return std::clamp((std::min(high, to) - std::max(low, from)) / (to - from), 0.0, 1.0);
  };
  return share(window.minX, window.maxX, extent_.minX, extent_.maxX) *
         share(window.minY, window.maxY, extent_.minY, extent_.maxY);
}

std::size_t SpatialIndex::MemoryBytes() const {
  return sizeof(*this) + levels_.capacity() * sizeof(Level) + starts_.capacity() * 4 +
         items_.capacity() * 4;
}

}  // namespace parvenna::drawing
