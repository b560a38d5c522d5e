#include "drawing/dxf_tables.h"

#include <cstdlib>
#include <istream>
#include <map>

#include "drawing/cad_text.h"

namespace parvenna::drawing {
namespace {

std::string Trimmed(const std::string& line) {
  const auto first = line.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return {};
  const auto last = line.find_last_not_of(" \t\r\n");
  return line.substr(first, last - first + 1);
}

struct Pair {
  int code = -1;
  std::string value;
};

bool ReadPair(std::istream& in, Pair& pair) {
  std::string code, value;
  if (!std::getline(in, code) || !std::getline(in, value)) return false;
  char* end = nullptr;
  const std::string c = Trimmed(code);
  pair.code = static_cast<int>(std::strtol(c.c_str(), &end, 10));
  if (c.empty() || *end != '\0') return false;  // not an ASCII DXF any more
  // Values keep their inner blanks; a name may end in one.
  if (!value.empty() && value.back() == '\r') value.pop_back();
  pair.value = pair.code == 2 ? value : Trimmed(value);
  return true;
}

// The entities up to the end of the section, counted by type unless they
// stand in paper space (group 67 of 1).
void CountEntities(std::istream& in, std::vector<std::pair<std::string, std::uint32_t>>& counts) {
  std::map<std::string, std::uint32_t> byType;
  std::string type;
  bool paper = false;
  const auto finish = [&] {
    if (!type.empty() && !paper) ++byType[type];
    type.clear();
    paper = false;
  };
  Pair pair;
  while (ReadPair(in, pair)) {
    if (pair.code == 0) {
      finish();
      if (pair.value == "ENDSEC") break;
      type = pair.value;
    } else if (pair.code == 67) {
      paper = std::atoi(pair.value.c_str()) == 1;
    }
  }
  finish();
  counts.assign(byType.begin(), byType.end());
}

}  // namespace

DxfTables ReadDxfTables(std::istream& in) {
  DxfTables tables;
  std::vector<DxfLayerEntry>& layers = tables.layers;
  Pair pair;
  bool inLayerTable = false, inRecord = false;
  std::string lastZero;
  while (ReadPair(in, pair)) {
    if (pair.code == 0) {
      lastZero = pair.value;
      inRecord = false;
      if (pair.value == "ENDTAB") inLayerTable = false;
      if (pair.value == "LAYER" && inLayerTable) {
        layers.emplace_back();
        inRecord = true;
      }
      continue;
    }
    if (pair.code == 2 && lastZero == "SECTION") {
      const std::string name = Trimmed(pair.value);
      if (name == "ENTITIES") {
        CountEntities(in, tables.entityCounts);
        break;
      }
      continue;
    }
    if (pair.code == 2 && lastZero == "TABLE") {
      inLayerTable = Trimmed(pair.value) == "LAYER";
      continue;
    }
    if (!inRecord) continue;
    DxfLayerEntry& layer = layers.back();
    switch (pair.code) {
      case 2: layer.name = EnsureUtf8(pair.value); break;
      case 62: {
        const int n = std::atoi(pair.value.c_str());
        layer.off = n < 0;
        layer.colour = n < 0 ? -n : n;
        break;
      }
      case 70: layer.frozen = (std::atoi(pair.value.c_str()) & 1) != 0; break;
      case 420: {
        const long v = std::atol(pair.value.c_str());
        layer.trueColour = Rgb{static_cast<std::uint8_t>((v >> 16) & 0xFF),
                               static_cast<std::uint8_t>((v >> 8) & 0xFF),
                               static_cast<std::uint8_t>(v & 0xFF)};
        break;
      }
      default: break;
    }
  }
  std::erase_if(layers, [](const DxfLayerEntry& l) { return l.name.empty(); });
  return tables;
}

Rgb AciColour(int number) {
  static constexpr Rgb kFirst[10] = {{0, 0, 0},       {255, 0, 0},   {255, 255, 0}, {0, 255, 0},
                                     {0, 255, 255},   {0, 0, 255},   {255, 0, 255}, {255, 255, 255},
                                     {128, 128, 128}, {192, 192, 192}};
  static constexpr std::uint8_t kGreys[6] = {51, 80, 105, 130, 190, 255};
  if (number < 0 || number > 255) return kFirst[7];
  if (number < 10) return kFirst[number];
  if (number >= 250) return {kGreys[number - 250], kGreys[number - 250], kGreys[number - 250]};
  // 10 to 249: 24 hues of 15 degrees, each in five shades, full and pale.
  static constexpr double kValue[5] = {1.0, 0.65, 0.5, 0.3, 0.15};
  const int hueStep = (number - 10) / 10;
  const int shade = (number % 10) / 2;
  const bool pale = (number % 2) == 1;
  const double h = hueStep * 15.0 / 60.0;  // sextant
  const int sextant = static_cast<int>(h) % 6;
  const double f = h - static_cast<int>(h);
  const double v = kValue[shade] * 255.0;
  const double s = pale ? 0.5 : 1.0;
  const double p = v * (1 - s), q = v * (1 - s * f), t = v * (1 - s * (1 - f));
  double r = v, g = t, b = p;
  switch (sextant) {
    case 0: r = v; g = t; b = p; break;
    case 1: r = q; g = v; b = p; break;
    case 2: r = p; g = v; b = t; break;
    case 3: r = p; g = q; b = v; break;
    case 4: r = t; g = p; b = v; break;
    default: r = v; g = p; b = q; break;
  }
  return {static_cast<std::uint8_t>(r + 0.5), static_cast<std::uint8_t>(g + 0.5),
          static_cast<std::uint8_t>(b + 0.5)};
}

}  // namespace parvenna::drawing
