#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/drawing_format.h"
#include "drawing/dwg_converter.h"
#include "drawing/geometry2d.h"
#include "platform/colour.h"

// A drawing as the views and the grabbing see it, read from its file at once
// into plain arrays. Everything is kept compactly, since a county plat sheet
// holds half a million entities: one shared vertex array, one string pool for
// the texts, and a small fixed record per entity.
namespace parvenna::drawing {

struct Layer {
  std::string name;
  bool on = true;          // off or frozen in the file: shown off at load
  Rgb colour{255, 255, 255};
  std::uint32_t entityCount = 0;
};

// A Hatch is the boundary of an area: its rings follow one another in the
// vertex array, each ended by a point whose x is not a number. Only texts
// are ever taken for labels.
enum class EntityKind : std::uint8_t { Point, Line, Polyline, Arc, Circle, Text, Hatch };

// The word for a kind, as the search reports it ("TEXT", "LINE", ...).
std::string_view KindName(EntityKind kind);

// Entity::flags: a hatch painted solid rather than as its boundary.
inline constexpr std::uint8_t kFilled = 1;

// How a text's codes are read: MTEXT format codes (\P, {\f..;}, ...) and the
// percent codes; the percent codes and \U+ characters of single-line text;
// or none at all (DGN text, kept literally).
enum class TextCodes : std::uint8_t { MText, Single, Literal };

// Anchor of a text relative to its insertion point: horizontally left,
// centre or right; vertically at the baseline, the middle, the top or the
// bottom of the lines.
enum class HAlign : std::uint8_t { Left, Centre, Right };
enum class VAlign : std::uint8_t { Baseline, Middle, Top, Bottom };

struct Entity {
  Box bounds;                 // in drawing units, texts included
  std::uint64_t handle = 0;   // the file's entity handle, or a running number
  std::uint32_t first = 0;    // Point/Line/Polyline: first vertex; Arc/Circle: arc; Text: text
  std::uint32_t count = 0;    // vertices of a Point/Line/Polyline
  std::uint16_t layer = 0;
  EntityKind kind = EntityKind::Point;
  Rgb colour;
  std::uint8_t flags = 0;
};

struct ArcData {
  Point centre;
  double radius = 0;
  double start = 0;  // radians anticlockwise from the x axis
  double end = 0;    // anticlockwise from start; a circle runs 0 to 2 pi
};

struct TextData {
  Point insertion;
  float height = 0;    // of one line, in drawing units
  float rotation = 0;  // radians anticlockwise
  float width = 0;     // of the longest line, estimated from its characters
  float widthFactor = 1;  // of the characters: 1 for the font's own width
  float spacing = 1;      // of the lines, as a part of the usual spacing
  std::uint16_t lines = 1;
  HAlign halign = HAlign::Left;
  VAlign valign = VAlign::Baseline;
  TextCodes codes = TextCodes::MText;
  // Both texts live in the document's pool; the shown one equals the raw one
  // when the file carries no codes.
  std::uint32_t raw = 0, rawLength = 0;
  std::uint32_t shown = 0, shownLength = 0;
};

// How many entities of one type the file's model space holds ("TEXT",
// "INSERT", ...), drawn or not.
struct FileCount {
  std::string type;
  std::uint32_t count = 0;
};

struct DrawingDocument {
  DrawingFormat format = DrawingFormat::Unknown;
  std::string version;  // "AC1032" for a DWG 2018; "V7" for a DGN
  std::string path;
  std::vector<Layer> layers;
  std::vector<Entity> entities;
  std::vector<Point> vertices;
  std::vector<ArcData> arcs;
  std::vector<TextData> texts;
  std::string pool;
  Box extent;  // of all entities; empty for an empty drawing
  // By type, in the order of the type names; empty where the reader tells none.
  std::vector<FileCount> fileCounts;

  std::string_view RawText(const TextData& text) const {
    return std::string_view(pool).substr(text.raw, text.rawLength);
  }
  std::string_view ShownText(const TextData& text) const {
    return std::string_view(pool).substr(text.shown, text.shownLength);
  }
  // The text a pick hands on: as shown, with the percent codes as written.
  std::string PickText(const TextData& text) const;
  // The file's count of one type; 0 when it holds none.
  std::uint32_t FileCountOf(std::string_view type) const;
  const TextData& TextOf(const Entity& entity) const { return texts[entity.first]; }
  const ArcData& ArcOf(const Entity& entity) const { return arcs[entity.first]; }
  std::span<const Point> VerticesOf(const Entity& entity) const {
    return std::span<const Point>(vertices).subspan(entity.first, entity.count);
  }
  // The handle as text: upper-case hexadecimal.
  std::string HandleText(const Entity& entity) const;
  // Bytes held by the arrays, for the memory figures.
  std::size_t MemoryBytes() const;
};

// A handle written in hexadecimal, as files and HandleText write it; 0 for
// anything else.
std::uint64_t ParseHandle(std::string_view text);

// Texts are measured without fonts: a character is taken as this part of the
// text height wide, and lines stand this many heights apart.
inline constexpr double kCharacterWidth = 0.75;
inline constexpr double kLineSpacing = 5.0 / 3.0;

// Calls ring(points) for each ring of a hatch's vertices.
template <class Ring>
void ForEachRing(std::span<const Point> vertices, Ring&& ring) {
  std::size_t start = 0;
  for (std::size_t i = 0; i <= vertices.size(); ++i) {
    if (i < vertices.size() && !std::isnan(vertices[i].x)) continue;
    if (i > start) ring(vertices.subspan(start, i - start));
    start = i + 1;
  }
}

// DGN levels in the order of their numbers, the entities following.
void SortLevels(DrawingDocument& document);

// The four corners of a text's box, anticlockwise from the lower left.
std::array<Point, 4> TextCorners(const TextData& text);

struct LoadResult {
  std::unique_ptr<DrawingDocument> document;  // null on failure
  // Why it failed and what to do, in the user's words, shown beside
  // messages::OpenDrawingFileError.
  std::string detail;
};

// Reads a drawing: DXF and DGN V7 through GDAL, DWG through the converter.
// A file that is missing, unreadable, of a kind or version that cannot be
// read, or random bytes gives no document.
LoadResult LoadDrawing(const std::string& path, const DwgOptions& dwg = {});

}  // namespace parvenna::drawing
