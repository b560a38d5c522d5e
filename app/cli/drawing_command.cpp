#include "app/cli/drawing_command.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <ostream>

#include "drawing/grab_text.h"
#include "drawing/messages.h"
#include "drawing/viewer.h"

namespace parvenna::cli {
namespace {

struct Options {
  std::vector<std::string> positional;
  Notation notation;
  bool hasWindow = false;
  std::array<double, 4> window{};
};

bool ParseDouble(const std::string& text, double& value) {
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  return ec == std::errc() && ptr == end && std::isfinite(value);
}

bool ParseArgs(const std::vector<std::string>& args, Options& options, std::ostream& err) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--azimuth") {
      options.notation.BearingMode = false;
    } else if (a == "--degree-symbol" && i + 1 < args.size()) {
      options.notation.DegreeSymbolText = args[++i];
    } else if (a == "--window" && i + 1 < args.size()) {
      const std::string list = args[++i];
      std::size_t start = 0;
      for (int k = 0; k < 4; ++k) {
        const std::size_t comma = list.find(',', start);
        if ((k < 3) == (comma == std::string::npos) ||
            !ParseDouble(list.substr(start, comma - start), options.window[static_cast<std::size_t>(k)])) {
          err << "parvenna-cli: --window expects four numbers separated by commas\n";
          return false;
        }
        start = comma + 1;
      }
      options.hasWindow = true;
    } else if (a.size() > 1 && a[0] == '-' && a[1] == '-') {
      err << "parvenna-cli: unknown option \"" << a << "\"\n" << kDrawingUsage;
      return false;
    } else {
      options.positional.push_back(a);
    }
  }
  return true;
}

std::string Number(double v) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.4f", v);
  return buffer;
}

// One line per text: tabs and line breaks inside a text are written as \t and \n.
std::string OneLine(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (c == '\t') out += "\\t";
    else if (c == '\n') out += "\\n";
    else if (c == '\r') out += "\\r";
    else out += c;
  }
  return out;
}

void PrintText(std::ostream& out, const drawing::DrawingDocument& doc, const drawing::Entity& e,
               const Notation& notation) {
  const drawing::TextData& t = doc.TextOf(e);
  const std::string_view raw = doc.RawText(t);
  out << doc.HandleText(e) << '\t' << Number(t.insertion.x) << '\t' << Number(t.insertion.y) << '\t'
      << doc.layers[e.layer].name << '\t' << OneLine(raw);
  for (const std::string& value : drawing::GrabbedValues(notation, doc.PickText(t), 1)) {
    out << '\t' << OneLine(value);
  }
  out << '\n';
}

bool Load(const std::string& path, drawing::Viewer& view, std::ostream& err) {
  if (view.Load(path)) return true;
  err << drawing::messages::OpenDrawingFileError << '\n';
  if (!view.LoadDetail().empty()) err << path << ": " << view.LoadDetail() << '\n';
  return false;
}

// One text's size and placing: height, angle in degrees, alignment.
void PrintPlacing(std::ostream& out, const drawing::TextData& t) {
  static constexpr const char* kH[] = {"left", "centre", "right"};
  static constexpr const char* kV[] = {"baseline", "middle", "top", "bottom"};
  out << Number(t.height) << '\t' << Number(t.rotation * 180 / std::numbers::pi) << '\t'
      << kH[static_cast<int>(t.halign)] << '\t' << kV[static_cast<int>(t.valign)];
}

}  // namespace

int RunDrawing(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  Options options;
  if (!ParseArgs(args, options, err)) return 2;
  if (options.positional.size() != 1) {
    err << kDrawingUsage;
    return 2;
  }
  drawing::Viewer view;
  if (!Load(options.positional[0], view, err)) return 2;
  const drawing::DrawingDocument& doc = *view.Document();
  out << "format\t" << drawing::FormatName(doc.format);
  if (!doc.version.empty()) out << '\t' << doc.version;
  out << '\n';
  out << "layers\t" << doc.layers.size() << '\n';
  for (const drawing::Layer& layer : doc.layers) {
    out << "layer\t" << layer.name << '\t' << layer.entityCount << '\t' << (layer.on ? "on" : "off")
        << '\n';
  }
  std::map<std::string_view, std::size_t> kinds;
  for (const drawing::Entity& e : doc.entities) ++kinds[drawing::KindName(e.kind)];
  out << "entities\t" << doc.entities.size() << '\n';
  for (const auto& [kind, count] : kinds) out << "kind\t" << kind << '\t' << count << '\n';
  for (const drawing::FileCount& c : doc.fileCounts) out << "file\t" << c.type << '\t' << c.count << '\n';
  if (!doc.extent.Empty()) {
    out << "extent\t" << Number(doc.extent.minX) << '\t' << Number(doc.extent.minY) << '\t'
        << Number(doc.extent.maxX) << '\t' << Number(doc.extent.maxY) << '\n';
  }
  out << "texts\t" << doc.texts.size() << '\n';
  for (const drawing::Entity& e : doc.entities) {
    if (e.kind == drawing::EntityKind::Text) {
      out << "text\t";
      PrintText(out, doc, e, options.notation);
    }
  }
  for (const drawing::Entity& e : doc.entities) {
    if (e.kind == drawing::EntityKind::Text) {
      out << "placing\t" << doc.HandleText(e) << '\t';
      PrintPlacing(out, doc.TextOf(e));
      out << '\n';
    }
  }
  return 0;
}

int RunPick(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  Options options;
  if (!ParseArgs(args, options, err)) return 2;
  double x = 0, y = 0;
  if (options.positional.size() != 3 || !ParseDouble(options.positional[1], x) ||
      !ParseDouble(options.positional[2], y)) {
    err << kDrawingUsage;
    return 2;
  }
  drawing::Viewer view;
  view.SetViewport(1920, 1080);
  if (!Load(options.positional[0], view, err)) return 2;
  if (options.hasWindow) {
    view.ShowWindow(options.window[0], options.window[1], options.window[2], options.window[3]);
  }
  if (!view.FindTextAt({x, y})) {
    out << "no text at " << Number(x) << ", " << Number(y) << '\n';
    return 1;
  }
  const drawing::DrawingDocument& doc = *view.Document();
  PrintText(out, doc, doc.entities[view.Found() - 1], options.notation);
  return 0;
}

}  // namespace parvenna::cli
