#pragma once

#include <cstdio>
#include <string>

#include "tests/drawing/dxf_writer.h"

// A county plat sheet written for the benchmark and the tests of painting:
// blocks of 40 lots, each lot a closed boundary, fifteen lines (setbacks,
// easements, ticks), a curve, a monument circle, a bearing-and-distance label
// and a lot number, on eight layers. 25 blocks a side make 500,000 entities.
namespace parvenna::testing {

struct PlatSheet {
  static constexpr int kLotsAcross = 10, kLotsDown = 4;
  static constexpr double kLotWidth = 100, kLotDepth = 150, kRoad = 60;
  static constexpr double kBlockWidth = kLotsAcross * kLotWidth + kRoad;
  static constexpr double kBlockDepth = kLotsDown * kLotDepth + kRoad;

  int blocksPerSide = 25;
  // The layers' colour numbers: all 7 (white, black on a white sheet), or
  // each layer a colour of its own.
  bool coloured = false;

  bool Write(const std::string& path) const {
    DxfWriter dxf;
    int colour = 1;
    for (const char* name : {"LOTS", "SETBACKS", "EASEMENTS", "TICKS", "CURVES", "MONUMENTS",
                             "BEARINGS", "LOTNUMBERS"}) {
      dxf.Layer(name, coloured ? colour++ : 7);
    }
    int lot = 0;
    for (int bx = 0; bx < blocksPerSide; ++bx) {
      for (int by = 0; by < blocksPerSide; ++by) {
        for (int i = 0; i < kLotsAcross; ++i) {
          for (int j = 0; j < kLotsDown; ++j) {
            const double x = bx * kBlockWidth + i * kLotWidth;
            const double y = by * kBlockDepth + j * kLotDepth;
            ++lot;
            dxf.Polyline("LOTS",
                         {{x, y}, {x + kLotWidth, y}, {x + kLotWidth, y + kLotDepth}, {x, y + kLotDepth}},
                         true);
            for (int k = 0; k < 5; ++k) {
              dxf.Line("SETBACKS", x + 10, y + 10 + k * 26, x + 90, y + 10 + k * 26);
              dxf.Line("EASEMENTS", x + 5 + k * 18, y + 2, x + 5 + k * 18, y + 8);
              dxf.Line("TICKS", x + k * 20, y + kLotDepth - 3, x + k * 20 + 3, y + kLotDepth);
            }
            dxf.Arc("CURVES", x + 50, y + 75, 20, 10, 170);
            dxf.Circle("MONUMENTS", x, y, 0.5);
            char label[64];
            std::snprintf(label, sizeof label, "N %d%%%%d%02d'%02d\" E %d.%02d'", lot % 90, lot % 60,
                          (lot * 7) % 60, 100 + lot % 50, lot % 100);
            dxf.Text("BEARINGS", x + 8, y + 4, 2.5, label);
            dxf.Text("LOTNUMBERS", x + 45, y + 70, 6, std::to_string(lot % 40 + 1));
          }
        }
      }
    }
    return dxf.Save(path);
  }
};

}  // namespace parvenna::testing
