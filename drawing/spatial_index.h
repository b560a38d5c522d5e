#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "drawing/drawing_document.h"

// Finds the entities whose bounds meet a window, at a cost that follows the
// number found rather than the number held. A stack of uniform grids, each
// with cells twice the size of the one below: an entity sits once, in the
// grid whose cells are at least as large as the entity, in the cell that
// holds its centre. A query visits, per grid, the cells within half a cell of
// the window.
namespace parvenna::drawing {

class SpatialIndex {
 public:
  void Build(const std::vector<Entity>& entities, const Box& extent);
  void Clear();

  // Calls visit(index) for every entity whose bounds meet the window, each
  // once; within a cell in the order of the document.
  template <class Visit>
  void Query(const std::vector<Entity>& entities, const Box& window, Visit&& visit) const {
    if (levels_.empty() || window.Empty() || !window.Intersects(extent_)) return;
    for (const Level& level : levels_) {
      int x0, y0, x1, y1;
      CellRange(level, window.Inflated(level.cell / 2), x0, y0, x1, y1);
      for (int y = y0; y <= y1; ++y) {
        const std::uint32_t* row = starts_.data() + level.firstCell + static_cast<std::size_t>(y) * level.nx;
        for (std::uint32_t k = row[x0]; k < row[x1 + 1]; ++k) {
          const std::uint32_t i = items_[k];
          if (entities[i].bounds.Intersects(window)) visit(i);
        }
      }
    }
  }

  // As Query, but in the order of the document, later entities over
  // earlier ones as a frame paints them, and with the entities read in the
  // order they lie in memory. `seen` is scratch, kept from call to call.
  template <class Visit>
  void QueryInOrder(const std::vector<Entity>& entities, const Box& window,
                    std::vector<std::uint64_t>& seen, Visit&& visit) const {
    if (levels_.empty() || window.Empty() || !window.Intersects(extent_)) return;
    if (window.minX <= extent_.minX && window.minY <= extent_.minY && window.maxX >= extent_.maxX &&
        window.maxY >= extent_.maxY) {
      // Every entity lies within the extent.
      for (std::size_t i = 0; i < entities.size(); ++i) visit(static_cast<std::uint32_t>(i));
      return;
    }
    if (ShareOf(window) >= 0.25) {
      // Reading every entity in order costs less than the index, whose
      // cells send the reads all over memory.
      for (std::size_t i = 0; i < entities.size(); ++i) {
        if (entities[i].bounds.Intersects(window)) visit(static_cast<std::uint32_t>(i));
      }
      return;
    }
    seen.assign((entities.size() + 63) / 64, 0);
    Query(entities, window, [&](std::uint32_t i) { seen[i / 64] |= std::uint64_t{1} << (i % 64); });
    for (std::size_t w = 0; w < seen.size(); ++w) {
      for (std::uint64_t bits = seen[w]; bits != 0; bits &= bits - 1) {
        visit(static_cast<std::uint32_t>(w * 64 + static_cast<std::size_t>(std::countr_zero(bits))));
      }
    }
  }

  // The part of the drawing's extent that the window covers, 0 to 1.
  double ShareOf(const Box& window) const;

  std::size_t MemoryBytes() const;
  std::size_t LevelCount() const { return levels_.size(); }

 private:
  struct Level {
    double cell = 1;
    int nx = 1, ny = 1;
    std::size_t firstCell = 0;  // into starts_
  };
  void CellRange(const Level& level, const Box& box, int& x0, int& y0, int& x1, int& y1) const;

  Box extent_;
  std::vector<Level> levels_;
  // Cells of every level in a row, each cell's items from starts_[c] to
  // starts_[c + 1]; one more entry closes the last cell.
  std::vector<std::uint32_t> starts_;
  std::vector<std::uint32_t> items_;
};

}  // namespace parvenna::drawing
