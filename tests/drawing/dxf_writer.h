#pragma once

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

// Writes small ASCII DXF drawings for the tests and the benchmark.
namespace parvenna::testing {

class DxfWriter {
 public:
  struct LayerSpec {
    std::string name;
    int colour = 7;
    bool off = false;
    bool frozen = false;
  };

  void Layer(std::string name, int colour = 7, bool off = false, bool frozen = false) {
    layers_.push_back({std::move(name), colour, off, frozen});
  }

  // Each entity gets the next handle, from 100 hexadecimal; the handle is returned.
  unsigned Line(std::string_view layer, double x1, double y1, double x2, double y2) {
    Begin("LINE", layer);
    Real(10, x1); Real(20, y1); Real(11, x2); Real(21, y2);
    return handle_;
  }
  unsigned Circle(std::string_view layer, double cx, double cy, double r) {
    Begin("CIRCLE", layer);
    Real(10, cx); Real(20, cy); Real(40, r);
    return handle_;
  }
  unsigned Arc(std::string_view layer, double cx, double cy, double r, double startDeg, double endDeg) {
    Begin("ARC", layer);
    Real(10, cx); Real(20, cy); Real(40, r); Real(50, startDeg); Real(51, endDeg);
    return handle_;
  }
  unsigned Polyline(std::string_view layer, const std::vector<std::pair<double, double>>& points,
                    bool closed = false) {
    Begin("LWPOLYLINE", layer);
    Int(90, static_cast<int>(points.size()));
    Int(70, closed ? 1 : 0);
    for (const auto& [x, y] : points) { Real(10, x); Real(20, y); }
    return handle_;
  }
  // Single-line text with its baseline starting at (x, y).
  unsigned Text(std::string_view layer, double x, double y, double height, std::string_view text,
                double rotationDeg = 0) {
    Begin("TEXT", layer);
    Real(10, x); Real(20, y); Real(40, height); Str(1, text);
    if (rotationDeg != 0) Real(50, rotationDeg);
    return handle_;
  }
  // Single-line text placed by its second point: halign 1 centre, 2 right, 4
  // middle; valign 1 bottom, 2 middle, 3 top.
  unsigned AlignedText(std::string_view layer, double x, double y, double x2, double y2, double height,
                       std::string_view text, int halign, int valign) {
    Begin("TEXT", layer);
    Real(10, x); Real(20, y); Real(40, height); Str(1, text);
    Int(72, halign); Real(11, x2); Real(21, y2); Int(73, valign);
    return handle_;
  }
  // Multi-line text; attachment 1 is top left, 5 the middle, 7 bottom left.
  unsigned MText(std::string_view layer, double x, double y, double height, std::string_view text,
                 int attachment = 1) {
    Begin("MTEXT", layer);
    Real(10, x); Real(20, y); Real(40, height); Int(71, attachment); Str(1, text);
    return handle_;
  }
  // The entities written between these two calls make a block, whose base
  // point is the origin.
  void BeginBlock(std::string_view name) {
    inBlock_ = true;
    blocks_ += "  0\nBLOCK\n  8\n0\n  2\n";
    blocks_ += name;
    blocks_ += "\n 70\n0\n 10\n0\n 20\n0\n  3\n";
    blocks_ += name;
    blocks_ += '\n';
  }
  void EndBlock() {
    blocks_ += "  0\nENDBLK\n  8\n0\n";
    inBlock_ = false;
  }
  unsigned Insert(std::string_view layer, std::string_view block, double x, double y) {
    Begin("INSERT", layer);
    Str(2, block); Real(10, x); Real(20, y);
    return handle_;
  }
  // An entity of paper space, which the views do not show.
  unsigned PaperSpaceLine(std::string_view layer, double x1, double y1, double x2, double y2) {
    Begin("LINE", layer);
    Int(67, 1);
    Real(10, x1); Real(20, y1); Real(11, x2); Real(21, y2);
    return handle_;
  }

  std::string Document() const {
    std::string out;
    out.reserve(entities_.size() + 1024);
    out += "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n";
    out += "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n 70\n" +
           std::to_string(layers_.size()) + "\n";
    for (const LayerSpec& l : layers_) {
      out += "  0\nLAYER\n  2\n" + l.name + "\n 70\n" + std::to_string(l.frozen ? 1 : 0) +
             "\n 62\n" + std::to_string(l.off ? -l.colour : l.colour) + "\n  6\nCONTINUOUS\n";
    }
    out += "  0\nENDTAB\n  0\nENDSEC\n";
    if (!blocks_.empty()) out += "  0\nSECTION\n  2\nBLOCKS\n" + blocks_ + "  0\nENDSEC\n";
    out += "  0\nSECTION\n  2\nENTITIES\n";
    out += entities_;
    out += "  0\nENDSEC\n  0\nEOF\n";
    return out;
  }

  bool Save(const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    file << Document();
    return static_cast<bool>(file);
  }

  std::size_t EntityCount() const { return count_; }

 private:
  std::string& Out() { return inBlock_ ? blocks_ : entities_; }
  void Begin(std::string_view type, std::string_view layer) {
    ++handle_;
    if (!inBlock_) ++count_;
    Out() += "  0\n";
    Out() += type;
    char h[32];
    std::snprintf(h, sizeof h, "\n  5\n%X\n  8\n", handle_);
    Out() += h;
    Out() += layer;
    Out() += '\n';
  }
  void Real(int code, double v) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%3d\n%.10g\n", code, v);
    Out() += buffer;
  }
  void Int(int code, int v) {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "%3d\n%d\n", code, v);
    Out() += buffer;
  }
  void Str(int code, std::string_view text) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "%3d\n", code);
    Out() += buffer;
    Out() += text;
    Out() += '\n';
  }

  std::vector<LayerSpec> layers_;
  std::string entities_;
  std::string blocks_;
  bool inBlock_ = false;
  unsigned handle_ = 0xFF;
  std::size_t count_ = 0;
};

}  // namespace parvenna::testing
