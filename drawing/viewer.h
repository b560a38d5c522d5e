#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/drawing_cache.h"
#include "drawing/drawing_document.h"
#include "drawing/entity_painter.h"
#include "drawing/spatial_index.h"
#include "platform/canvas.h"
#include "platform/colour.h"

// One view of a drawing: what it shows (window, layers, colours), what a
// click meets, and its picture on a Canvas. Each view of the drawing window
// is one Viewer. A widget drives it: it hands in its size and the mouse in
// drawing units (ToDrawing), calls the commands, and paints with Render.
//
// Invariants: the window shown always has the aspect of the picture, and
// keeps its centre through every zoom; the zoom factor is 1 at "zoom all" and
// doubles with each zoom in; a frame visits only the entities whose bounds
// meet the window grown by the reach of their strokes and letters, and paints
// them in the order of the drawing, later ones over earlier ones; a part of
// the picture painted alone is that part of the whole picture.
namespace parvenna::drawing {

// A drawing with its index, read once; any number of views can show it.
struct IndexedDrawing {
  DrawingDocument document;
  SpatialIndex index;
  // How far, in drawing units, the letters of a text may stand out of its
  // box: descenders, accents and the sides of stretched letters.
  double textReach = 0;
  // Read from the cache's copy rather than the file.
  bool cached = false;
};

// Null when the file cannot be read; detail then says why. With a cache, an
// unchanged file is read from its copy there, and a file read afresh leaves
// a copy.
std::shared_ptr<const IndexedDrawing> ReadIndexedDrawing(const std::string& path,
                                                         std::string& detail,
                                                         const DrawingCache* cache = nullptr);
// A document already read, with its index.
std::shared_ptr<const IndexedDrawing> IndexDrawing(DrawingDocument document);

// The commands of the zoom buttons.
enum class ViewCommand { ZoomIn, ZoomOut, ZoomAll, UndoZoom, PartLarge };

// The shown window and its zoom, as stored for a saved view.
struct ViewState {
  double zoomFactor = 0;
  double blx = 0, bly = 0, trx = 0, try_ = 0;
};

// Fore colour numbers of the project options: these paint every entity in
// one colour; any other number keeps the entities' own colours.
inline constexpr int ForeWhite = 14;
inline constexpr int ForeBlack = 7;
inline constexpr int ForeYellow = 2;
inline constexpr int ForeBlue = 5;
inline constexpr int ForeOriginal = 256;

// The colour that marks entities already grabbed.
inline constexpr Rgb UsedMarkColour{255, 0, 255};

class Viewer {
 public:
  Viewer();
  ~Viewer();
  Viewer(Viewer&&) noexcept;
  Viewer& operator=(Viewer&&) noexcept;

  // --- the file ---
  // Reads the drawing; false when it cannot be read (the caller shows
  // messages::OpenDrawingFileError). A failed load leaves the view empty.
  bool Load(const std::string& path);
  // Shows a drawing that is already read, so two views can share one copy.
  // Layers show as the file has them, the marks are cleared, and the whole
  // drawing is in the window.
  void Show(std::shared_ptr<const IndexedDrawing> drawing);
  void Close();
  bool IsLoaded() const { return document_ != nullptr; }
  const std::string& FileName() const { return fileName_; }
  const std::string& LoadDetail() const { return loadDetail_; }
  const DrawingDocument* Document() const { return document_ ? &document_->document : nullptr; }
  std::shared_ptr<const IndexedDrawing> SharedDrawing() const { return document_; }

  // --- layers, numbered from 0 in the order of the drawing ---
  int LayerCount() const;
  std::string LayerName(int layer) const;
  bool LayerVisible(int layer) const;
  void SetLayerVisible(int layer, bool visible);
  // By name; false when the drawing has no such layer.
  bool SetLayerVisible(std::string_view name, bool visible);
  void ShowAllLayers();

  // --- the window ---
  // The size of the picture, in its own units (pixels for a widget).
  void SetViewport(double width, double height);
  double ViewportWidth() const { return viewportWidth_; }
  double ViewportHeight() const { return viewportHeight_; }
  void Run(ViewCommand command);
  void ZoomAll();
  void ZoomIn();
  void ZoomOut();
  void UndoZoom();
  // Zooms by a factor (2 is one zoom in) keeping the drawing point under
  // the cursor where it is on the screen.
  void ZoomAt(Point cursor, double factor);
  // Shows the window with these corners (widened to the picture's aspect).
  // Corners that make no window, all 0 for instance, show the whole drawing.
  void ShowWindow(double blx, double bly, double trx, double try_);
  ViewState ReadWindow() const;
  // Keeps the centre; a factor of 0 or less is ignored.
  void SetZoomFactor(double factor);
  void Pan(double dx, double dy);
  Box VisibleWindow() const;

  // "Enlarge a part": after Run(PartLarge), the next press and release of
  // the mouse span the window to show. MouseMove draws the band between.
  bool AwaitingPart() const { return awaitingPart_; }
  void MouseDown(Point at);
  void MouseMove(Point at);
  void MouseUp(Point at);

  // Between the picture's units (y downwards) and the drawing's.
  Point ToDrawing(double px, double py) const;
  CanvasPoint ToScreen(Point p) const;
  // The picture's scale and the drawing point at its lower left.
  PaintTransform CurrentTransform() const;

  // --- colours ---
  void SetBackColour(Rgb colour) {
    back_ = colour;
    ++look_;
  }
  Rgb BackColour() const { return back_; }
  void SetForeColour(int number) {
    foreNumber_ = number;
    ++look_;
  }
  int ForeColourNumber() const { return foreNumber_; }

  // --- pictures ---
  // The view: the canvas's size is taken as the viewport.
  void Render(Canvas& canvas);
  // Paints what meets one part of the picture at the viewport's size, over
  // what is there; the canvas keeps its strokes to the part. Changes nothing
  // in the view, so parts may be painted at once on threads of their own,
  // each with its own scratch. The number of entities painted.
  std::size_t RenderPart(Canvas& canvas, const PicturePart& part, PaintScratch& scratch) const;
  // About how many entities RenderPart would meet, from the part of the
  // drawing's extent the part shows.
  std::size_t EntitiesAbout(const PicturePart& part) const;
  // The rubber band of a window being dragged out to zoom to, while one is.
  void RenderRubberBand(Canvas& canvas) const;
  // Grows whenever the picture changes other than by a move of the window:
  // the drawing, the viewport, layers, colours, marks, the rubber band.
  unsigned Look() const { return look_; }
  // The whole drawing with the shown window as a rectangle.
  void RenderOverview(Canvas& canvas) const;
  // The drawing point under (px, py) of an overview of this size; false
  // without a drawing.
  bool OverviewToDrawing(double px, double py, double width, double height, Point& at) const;
  // Moves the window, at its size, to have this point in its middle.
  void CentreOn(Point at);
  // Entities visited by the last Render: what a frame cost.
  std::size_t LastFrameEntities() const { return lastFrameEntities_; }

  // --- searching at a point ---
  // How near, in picture units, a click must come to an entity.
  void SetPickTolerance(double units) { pickTolerance_ = units; }
  // Finds the entities at a drawing point, nearest first; with a start
  // handle the search goes on after that entity. True when one is found.
  bool Search(Point at, std::string_view startHandle = {});
  // The entity found, numbered from 1; 0 when none.
  std::uint32_t Found() const;
  // Moves to the next entity of the search; its handle, or "" at the end.
  std::string NextEntity();
  std::string FoundHandle() const;
  // "TEXT", "LINE", "POLYLINE", "ARC", "CIRCLE", "POINT" or "HATCH"; "" when none.
  std::string FoundDescription() const;
  // The text of the entity found, as the drawing shows it but with its
  // percent codes (%%d) as written: what a pick hands on. Empty for any
  // other entity.
  std::string FoundText() const;
  // The first text entity at a point, or none: the search a click makes.
  bool FindTextAt(Point at);

  // Marks entities with this handle as used; they are drawn in the mark
  // colour. False when no entity has it.
  bool MarkUsed(std::string_view handle);
  bool IsMarked(std::uint32_t entity) const;
  void ClearMarks();


 private:
  void SetWindow(const Box& window, bool remember);
  Box FittedWindow(const Box& window) const;
  Box AllWindow() const;
  // The drawing's window of a part of the picture, grown by the reach of
  // strokes and letters.
  Box PartWindow(const PicturePart& part) const;
  double ZoomAllScale() const;
  double DistanceTo(std::uint32_t entity, Point at) const;
  bool OverviewTransform(double width, double height, PaintTransform& t) const;

  std::shared_ptr<const IndexedDrawing> document_;
  std::string fileName_;
  std::string loadDetail_;
  std::vector<bool> layerVisible_;
  std::vector<bool> marked_;

  double viewportWidth_ = 1920, viewportHeight_ = 1080;
  Box window_;  // as asked; the shown window widens it to the viewport's aspect
  std::vector<Box> history_;

  bool awaitingPart_ = false, dragging_ = false;
  Point dragFrom_, dragTo_;

  Rgb back_ = colours::White;
  int foreNumber_ = ForeOriginal;

  double pickTolerance_ = 3;
  std::vector<std::uint32_t> hits_;
  std::size_t hit_ = 0;

  std::size_t lastFrameEntities_ = 0;
  PaintScratch scratch_;
  unsigned look_ = 0;
};

}  // namespace parvenna::drawing
