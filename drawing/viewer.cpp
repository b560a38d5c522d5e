#include "drawing/viewer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>


namespace parvenna::drawing {
namespace {

constexpr std::size_t kHistoryDepth = 64;
constexpr Rgb kWindowFrameColour{255, 0, 0};
// How far, in picture units, a stroke's shading and caps reach beyond the
// entity's bounds.
constexpr double kStrokeReach = 2;
// Letters stand out of a text's box by less than this part of its height
// (times its width factor, when wider than usual).
constexpr double kLetterReach = 0.5;

double SegmentDistance(Point p, Point a, Point b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double len2 = dx * dx + dy * dy;
  double t = len2 > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / len2 : 0;
  t = std::clamp(t, 0.0, 1.0);
  return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

double TextDistance(const TextData& text, Point p) {
  const auto corners = TextCorners(text);
  // Into the text's own frame: x along the baseline from the first corner.
  const double c = std::cos(text.rotation), s = std::sin(text.rotation);
  const double dx = p.x - corners[0].x, dy = p.y - corners[0].y;
  const double u = dx * c + dy * s, v = -dx * s + dy * c;
  const double w = text.width;
  const double h = std::hypot(corners[3].x - corners[0].x, corners[3].y - corners[0].y);
  const double ou = u < 0 ? -u : (u > w ? u - w : 0);
  const double ov = v < 0 ? -v : (v > h ? v - h : 0);
  return std::hypot(ou, ov);
}

std::shared_ptr<IndexedDrawing> Indexed(DrawingDocument document, bool cached) {
  auto drawing = std::make_shared<IndexedDrawing>();
  drawing->document = std::move(document);
  drawing->index.Build(drawing->document.entities, drawing->document.extent);
  for (const TextData& text : drawing->document.texts) {
    drawing->textReach = std::max(drawing->textReach, kLetterReach * text.height *
                                                          std::max(1.0f, text.widthFactor));
  }
  drawing->cached = cached;
  return drawing;
}

}  // namespace

std::shared_ptr<const IndexedDrawing> ReadIndexedDrawing(const std::string& path,
                                                         std::string& detail,
                                                         const DrawingCache* cache) {
  detail.clear();
  // Stamped before the reading: a file changed meanwhile is read again next time.
  const FileStamp stamp = cache ? StampOf(path) : FileStamp{};
  if (cache) {
    if (auto kept = cache->Find(path, stamp)) return Indexed(std::move(*kept), true);
  }
  LoadResult loaded = LoadDrawing(path);
  if (!loaded.document) {
    detail = loaded.detail;
    return nullptr;
  }
  if (cache) cache->Keep(*loaded.document, stamp);
  return Indexed(std::move(*loaded.document), false);
}

std::shared_ptr<const IndexedDrawing> IndexDrawing(DrawingDocument document) {
  return Indexed(std::move(document), false);
}

Viewer::Viewer() = default;
Viewer::~Viewer() = default;
Viewer::Viewer(Viewer&&) noexcept = default;
Viewer& Viewer::operator=(Viewer&&) noexcept = default;

bool Viewer::Load(const std::string& path) {
  Close();
  auto drawing = ReadIndexedDrawing(path, loadDetail_);
  if (!drawing) return false;
  Show(std::move(drawing));
  return true;
}

void Viewer::Show(std::shared_ptr<const IndexedDrawing> drawing) {
  Close();
  document_ = std::move(drawing);
  if (!document_) return;
  const DrawingDocument& doc = document_->document;
  fileName_ = doc.path;
  layerVisible_.resize(doc.layers.size());
  for (std::size_t i = 0; i < doc.layers.size(); ++i) layerVisible_[i] = doc.layers[i].on;
  marked_.assign(doc.entities.size(), false);
  ZoomAll();
  history_.clear();
  ++look_;
}

void Viewer::Close() {
  document_.reset();
  fileName_.clear();
  layerVisible_.clear();
  marked_.clear();
  history_.clear();
  hits_.clear();
  hit_ = 0;
  window_ = {};
  awaitingPart_ = dragging_ = false;
  ++look_;
}

// --- layers ---

int Viewer::LayerCount() const { return static_cast<int>(layerVisible_.size()); }

std::string Viewer::LayerName(int layer) const {
  if (!document_ || layer < 0 || layer >= LayerCount()) return {};
  return document_->document.layers[static_cast<std::size_t>(layer)].name;
}

bool Viewer::LayerVisible(int layer) const {
  return layer >= 0 && layer < LayerCount() && layerVisible_[static_cast<std::size_t>(layer)];
}

void Viewer::SetLayerVisible(int layer, bool visible) {
  if (layer >= 0 && layer < LayerCount()) layerVisible_[static_cast<std::size_t>(layer)] = visible;
  ++look_;
}

bool Viewer::SetLayerVisible(std::string_view name, bool visible) {
  for (int i = 0; i < LayerCount(); ++i) {
    if (document_->document.layers[static_cast<std::size_t>(i)].name == name) {
      SetLayerVisible(i, visible);
      return true;
    }
  }
  return false;
}

void Viewer::ShowAllLayers() {
  std::fill(layerVisible_.begin(), layerVisible_.end(), true);
  ++look_;
}

// --- the window ---

void Viewer::SetViewport(double width, double height) {
  if (width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height) &&
      (width != viewportWidth_ || height != viewportHeight_)) {
    viewportWidth_ = width;
    viewportHeight_ = height;
    ++look_;
  }
}

Box Viewer::FittedWindow(const Box& window) const {
  if (window.Empty()) return window;
  const double ww = std::max(window.Width(), 1e-9), wh = std::max(window.Height(), 1e-9);
  const double scale = std::min(viewportWidth_ / ww, viewportHeight_ / wh);
  const double hw = viewportWidth_ / scale / 2, hh = viewportHeight_ / scale / 2;
  const Point c = window.Centre();
  return {c.x - hw, c.y - hh, c.x + hw, c.y + hh};
}

Box Viewer::VisibleWindow() const { return FittedWindow(window_); }

PaintTransform Viewer::CurrentTransform() const {
  PaintTransform t;
  const Box vis = VisibleWindow();
  t.height = viewportHeight_;
  if (vis.Empty()) return t;
  t.ox = vis.minX;
  t.oy = vis.minY;
  t.scale = viewportWidth_ / vis.Width();
  return t;
}

Box Viewer::AllWindow() const {
  if (!document_) return {};
  const Box& extent = document_->document.extent;
  if (extent.Empty()) return {0, 0, 1, 1};
  const double margin = std::max(extent.Width(), extent.Height()) * 0.02;
  Box all = extent.Inflated(margin);
  if (all.Width() <= 0 && all.Height() <= 0) all = all.Inflated(0.5);
  return all;
}

double Viewer::ZoomAllScale() const {
  const Box fitted = FittedWindow(AllWindow());
  return fitted.Empty() ? 1 : viewportWidth_ / fitted.Width();
}

void Viewer::SetWindow(const Box& window, bool remember) {
  if (window.Empty() || !std::isfinite(window.minX) || !std::isfinite(window.maxX) ||
      !std::isfinite(window.minY) || !std::isfinite(window.maxY)) {
    return;
  }
  Box w = window;
  // A window of no size, as a drawing of one point gives, is one unit wide.
  if (w.Width() <= 0 && w.Height() <= 0) w = w.Inflated(0.5);
  if (remember && !window_.Empty()) {
    history_.push_back(window_);
    if (history_.size() > kHistoryDepth) history_.erase(history_.begin());
  }
  window_ = w;
}

void Viewer::Run(ViewCommand command) {
  switch (command) {
    case ViewCommand::ZoomIn: ZoomIn(); break;
    case ViewCommand::ZoomOut: ZoomOut(); break;
    case ViewCommand::ZoomAll: ZoomAll(); break;
    case ViewCommand::UndoZoom: UndoZoom(); break;
    case ViewCommand::PartLarge:
      if (document_) awaitingPart_ = true;
      break;
  }
}

void Viewer::ZoomAll() {
  if (document_) SetWindow(AllWindow(), true);
}

void Viewer::ZoomIn() {
  if (!document_) return;
  ZoomAt(VisibleWindow().Centre(), 2);
}

void Viewer::ZoomOut() {
  if (!document_) return;
  ZoomAt(VisibleWindow().Centre(), 0.5);
}

void Viewer::ZoomAt(Point cursor, double factor) {
  if (!document_ || !(factor > 0) || !std::isfinite(factor)) return;
  const Box vis = VisibleWindow();
  // The cursor keeps its place: its offset from each side shrinks by factor.
  const Box next{cursor.x - (cursor.x - vis.minX) / factor, cursor.y - (cursor.y - vis.minY) / factor,
                 cursor.x + (vis.maxX - cursor.x) / factor, cursor.y + (vis.maxY - cursor.y) / factor};
  SetWindow(next, true);
}

void Viewer::UndoZoom() {
  if (history_.empty()) return;
  window_ = history_.back();
  history_.pop_back();
}

void Viewer::ShowWindow(double blx, double bly, double trx, double try_) {
  if (!document_) return;
  const Box w = Box::Of(blx, bly, trx, try_);
  if (!(w.Width() > 0 && w.Height() > 0) || !std::isfinite(w.Width()) ||
      !std::isfinite(w.Height())) {
    ZoomAll();
    return;
  }
  SetWindow(w, true);
}

ViewState Viewer::ReadWindow() const {
  ViewState state;
  if (!document_) return state;
  const Box vis = VisibleWindow();
  state.blx = vis.minX;
  state.bly = vis.minY;
  state.trx = vis.maxX;
  state.try_ = vis.maxY;
  state.zoomFactor = CurrentTransform().scale / ZoomAllScale();
  return state;
}

void Viewer::SetZoomFactor(double factor) {
  if (!document_ || !(factor > 0) || !std::isfinite(factor)) return;
  const double scale = ZoomAllScale() * factor;
  const Point c = VisibleWindow().Centre();
  const double hw = viewportWidth_ / scale / 2, hh = viewportHeight_ / scale / 2;
  SetWindow({c.x - hw, c.y - hh, c.x + hw, c.y + hh}, true);
}

void Viewer::Pan(double dx, double dy) {
  if (!document_ || !std::isfinite(dx) || !std::isfinite(dy)) return;
  window_ = {window_.minX - dx, window_.minY - dy, window_.maxX - dx, window_.maxY - dy};
}

void Viewer::MouseDown(Point at) {
  if (!awaitingPart_) return;
  dragging_ = true;
  dragFrom_ = dragTo_ = at;
  ++look_;
}

void Viewer::MouseMove(Point at) {
  if (!dragging_) return;
  dragTo_ = at;
  ++look_;
}

void Viewer::MouseUp(Point at) {
  if (!dragging_) return;
  dragging_ = awaitingPart_ = false;
  ++look_;
  const Box part = Box::Of(dragFrom_.x, dragFrom_.y, at.x, at.y);
  if (part.Width() > 0 && part.Height() > 0) SetWindow(part, true);
}

Point Viewer::ToDrawing(double px, double py) const {
  const PaintTransform t = CurrentTransform();
  return {t.ox + px / t.scale, t.oy + (t.height - py) / t.scale};
}

CanvasPoint Viewer::ToScreen(Point p) const { return CurrentTransform().To(p); }

// --- pictures ---

void Viewer::Render(Canvas& canvas) {
  SetViewport(canvas.Width(), canvas.Height());
  canvas.Clear(back_);
  lastFrameEntities_ = 0;
  if (!document_) return;
  const PicturePart whole{0, 0, static_cast<int>(std::ceil(viewportWidth_)),
                          static_cast<int>(std::ceil(viewportHeight_))};
  lastFrameEntities_ = RenderPart(canvas, whole, scratch_);
  RenderRubberBand(canvas);
}

void Viewer::RenderRubberBand(Canvas& canvas) const {
  if (!document_ || !dragging_) return;
  const PaintTransform t = CurrentTransform();
  const CanvasPoint a = t.To(dragFrom_), b = t.To(dragTo_);
  canvas.Box(a.x, a.y, b.x, b.y, ContrastOf(back_));
}

Box Viewer::PartWindow(const PicturePart& part) const {
  const PaintTransform t = CurrentTransform();
  const Point low = ToDrawing(part.left, part.bottom), high = ToDrawing(part.right, part.top);
  return Box::Of(low.x, low.y, high.x, high.y).Inflated(kStrokeReach / t.scale + document_->textReach);
}

std::size_t Viewer::RenderPart(Canvas& canvas, const PicturePart& part, PaintScratch& scratch) const {
  if (!document_ || part.Empty()) return 0;
  EntityPainter painter(document_->document, canvas, CurrentTransform(), back_, foreNumber_, scratch,
                        part);
  const auto& entities = document_->document.entities;
  std::size_t painted = 0;
  document_->index.QueryInOrder(entities, PartWindow(part), scratch.seen, [&](std::uint32_t i) {
    const Entity& e = entities[i];
    if (!layerVisible_[e.layer]) return;
    ++painted;
    painter.Paint(e, marked_[i]);
  });
  return painted;
}

std::size_t Viewer::EntitiesAbout(const PicturePart& part) const {
  if (!document_ || part.Empty()) return 0;
  const double all = static_cast<double>(document_->document.entities.size());
  return static_cast<std::size_t>(document_->index.ShareOf(PartWindow(part)) * all);
}

bool Viewer::OverviewTransform(double w, double h, PaintTransform& t) const {
  if (!document_ || !(w > 0 && h > 0)) return false;
  Box all = document_->document.extent;
  if (all.Empty()) return false;
  all = all.Inflated(std::max(all.Width(), all.Height()) * 0.02 + 1e-9);
  const double scale = std::min(w / all.Width(), h / all.Height());
  const Point c = all.Centre();
  t = {c.x - w / scale / 2, c.y - h / scale / 2, scale, h};
  return true;
}

bool Viewer::OverviewToDrawing(double px, double py, double width, double height, Point& at) const {
  PaintTransform t;
  if (!OverviewTransform(width, height, t)) return false;
  at = {t.ox + px / t.scale, t.oy + (t.height - py) / t.scale};
  return true;
}

void Viewer::CentreOn(Point at) {
  if (!document_ || !std::isfinite(at.x) || !std::isfinite(at.y)) return;
  const Point c = VisibleWindow().Centre();
  SetWindow({window_.minX + at.x - c.x, window_.minY + at.y - c.y, window_.maxX + at.x - c.x,
             window_.maxY + at.y - c.y},
            true);
}

void Viewer::RenderOverview(Canvas& canvas) const {
  canvas.Clear(back_);
  PaintTransform t;
  if (!OverviewTransform(canvas.Width(), canvas.Height(), t)) return;
  const DrawingDocument& doc = document_->document;
  PaintScratch scratch;
  EntityPainter painter(doc, canvas, t, back_, foreNumber_, scratch);
  for (std::size_t i = 0; i < doc.entities.size(); ++i) {
    const Entity& e = doc.entities[i];
    if (layerVisible_[e.layer]) painter.Paint(e, marked_[i]);
  }
  const Box vis = VisibleWindow();
  const CanvasPoint a = t.To({vis.minX, vis.minY}), b = t.To({vis.maxX, vis.maxY});
  canvas.Box(a.x, a.y, b.x, b.y, kWindowFrameColour);
}

// --- searching ---

double Viewer::DistanceTo(std::uint32_t index, Point p) const {
  const DrawingDocument& doc = document_->document;
  const Entity& e = doc.entities[index];
  switch (e.kind) {
    case EntityKind::Text:
      return TextDistance(doc.TextOf(e), p);
    case EntityKind::Circle: {
      const ArcData& a = doc.ArcOf(e);
      return std::abs(std::hypot(p.x - a.centre.x, p.y - a.centre.y) - a.radius);
    }
    case EntityKind::Arc: {
      const ArcData& a = doc.ArcOf(e);
      double angle = std::atan2(p.y - a.centre.y, p.x - a.centre.x) - a.start;
      angle = std::fmod(angle, 2 * std::numbers::pi);
      if (angle < 0) angle += 2 * std::numbers::pi;
      if (angle <= a.end) return std::abs(std::hypot(p.x - a.centre.x, p.y - a.centre.y) - a.radius);
      const Point s{a.centre.x + a.radius * std::cos(a.start), a.centre.y + a.radius * std::sin(a.start)};
      const Point z{a.centre.x + a.radius * std::cos(a.start + a.end),
                    a.centre.y + a.radius * std::sin(a.start + a.end)};
      return std::min(std::hypot(p.x - s.x, p.y - s.y), std::hypot(p.x - z.x, p.y - z.y));
    }
    case EntityKind::Hatch: {
      double best = std::numeric_limits<double>::infinity();
      ForEachRing(doc.VerticesOf(e), [&](std::span<const Point> ring) {
        for (std::size_t k = 0; k < ring.size(); ++k) {
          best = std::min(best, SegmentDistance(p, ring[k], ring[(k + 1) % ring.size()]));
        }
      });
      return best;
    }
    default: {
      const auto points = doc.VerticesOf(e);
      if (points.size() == 1) return std::hypot(p.x - points[0].x, p.y - points[0].y);
      double best = std::numeric_limits<double>::infinity();
      for (std::size_t k = 1; k < points.size(); ++k) {
        best = std::min(best, SegmentDistance(p, points[k - 1], points[k]));
      }
      return best;
    }
  }
}

bool Viewer::Search(Point at, std::string_view startHandle) {
  hits_.clear();
  hit_ = 0;
  if (!document_ || !std::isfinite(at.x) || !std::isfinite(at.y)) return false;
  const double tolerance = pickTolerance_ / CurrentTransform().scale;
  const Box near{at.x - tolerance, at.y - tolerance, at.x + tolerance, at.y + tolerance};
  const auto& entities = document_->document.entities;
  std::vector<std::pair<double, std::uint32_t>> found;
  document_->index.Query(entities, near, [&](std::uint32_t i) {
    if (!layerVisible_[entities[i].layer]) return;
    const double d = DistanceTo(i, at);
    if (d <= tolerance) found.emplace_back(d, i);
  });
  std::sort(found.begin(), found.end(), [&](const auto& a, const auto& b) {
    if (a.first != b.first) return a.first < b.first;
    const bool ta = entities[a.second].kind == EntityKind::Text;
    const bool tb = entities[b.second].kind == EntityKind::Text;
    if (ta != tb) return ta;
    return a.second < b.second;
  });
  for (const auto& f : found) hits_.push_back(f.second);
  if (!startHandle.empty()) {
    const std::uint64_t h = ParseHandle(startHandle);
    for (std::size_t k = 0; k < hits_.size(); ++k) {
      if (entities[hits_[k]].handle == h) {
        hit_ = k + 1;
        break;
      }
    }
  }
  return Found() != 0;
}

std::uint32_t Viewer::Found() const { return hit_ < hits_.size() ? hits_[hit_] + 1 : 0; }

std::string Viewer::NextEntity() {
  if (hit_ < hits_.size()) ++hit_;
  return FoundHandle();
}

std::string Viewer::FoundHandle() const {
  const std::uint32_t found = Found();
  if (found == 0) return {};
  return document_->document.HandleText(document_->document.entities[found - 1]);
}

std::string Viewer::FoundDescription() const {
  const std::uint32_t found = Found();
  if (found == 0) return {};
  return std::string(KindName(document_->document.entities[found - 1].kind));
}

std::string Viewer::FoundText() const {
  const std::uint32_t found = Found();
  if (found == 0) return {};
  const DrawingDocument& doc = document_->document;
  const Entity& e = doc.entities[found - 1];
  if (e.kind != EntityKind::Text) return {};
  return doc.PickText(doc.TextOf(e));
}

bool Viewer::FindTextAt(Point at) {
  Search(at);
  while (Found() != 0 && FoundDescription() != "TEXT") NextEntity();
  return Found() != 0;
}

bool Viewer::MarkUsed(std::string_view handle) {
  if (!document_) return false;
  const std::uint64_t h = ParseHandle(handle);
  if (h == 0) return false;
  bool any = false;
  const auto& entities = document_->document.entities;
  for (std::size_t i = 0; i < entities.size(); ++i) {
    if (entities[i].handle == h) {
      marked_[i] = true;
      any = true;
    }
  }
  ++look_;
  return any;
}

bool Viewer::IsMarked(std::uint32_t entity) const {
  return entity < marked_.size() && marked_[entity];
}

void Viewer::ClearMarks() {
  std::fill(marked_.begin(), marked_.end(), false);
  ++look_;
}

}  // namespace parvenna::drawing
