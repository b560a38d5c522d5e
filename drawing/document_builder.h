#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/drawing_document.h"

// Fills a DrawingDocument entity by entity, whichever reader the file needs:
// layers by name, the fixed records, the shared vertex array, the text pool
// and the extent. Finish() then sizes the texts, gives every entity a handle
// of its own and trims the arrays.
namespace parvenna::drawing {

// What every entity carries besides its geometry.
struct EntityStyle {
  std::uint16_t layer = 0;
  Rgb colour{255, 255, 255};
  std::uint64_t handle = 0;
};

class DocumentBuilder {
 public:
  explicit DocumentBuilder(DrawingDocument& document) : doc_(document) {}

  // A layer of the file's layer table, in the table's order; a name met
  // again is left as it was.
  void SeedLayer(const std::string& name, bool on, Rgb colour);
  // The layer of this name, added (shown, in this colour) when the table
  // did not have it.
  std::uint16_t LayerFor(std::string_view name, Rgb colour);
  Rgb LayerColour(std::uint16_t layer) const { return doc_.layers[layer].colour; }

  // One point, a line of two points or a polyline of more; points that are
  // not finite drop the entity.
  void AddPoints(std::span<const Point> points, const EntityStyle& style,
                 EntityKind twoPoints = EntityKind::Line);
  // An arc from start, anticlockwise by its sweep (ArcData::end), or the
  // whole circle.
  void AddArc(const ArcData& arc, bool full, const EntityStyle& style);
  // A text: its place, size and codes in text; the shown text is made here
  // from the raw one.
  void AddText(TextData text, std::string_view raw, const EntityStyle& style);
  // The rings of a hatch, each at least three points; filled or as outlines.
  void AddHatch(const std::vector<std::vector<Point>>& rings, bool filled, const EntityStyle& style);

  // Texts without a height get one from the size of the drawing, each text
  // its width and its box. Entities without a handle, and those after the
  // first of one handle (the pieces of a block drawn at each of its inserts),
  // get new handles above the file's largest, so that a mark meets one
  // entity.
  void Finish();

 private:
  void Add(Entity& entity, const EntityStyle& style, const Box& bounds);

  DrawingDocument& doc_;
  std::unordered_map<std::string, std::uint16_t> index_;
  std::string lastName_;
  std::uint16_t last_ = 0;
  bool hasLast_ = false;
  std::vector<std::uint32_t> longest_;  // characters of each text's longest line
};

}  // namespace parvenna::drawing
