#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace parvenna::cli {

// parvenna-cli drawing FILE: what a drawing holds, and every text entity with
// the values a grab would make of it (quadrant bearings). Exit status 0, or
// 2 for bad arguments or a drawing that cannot be read.
int RunDrawing(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// parvenna-cli pick FILE X Y: the text entity that a click at drawing point
// (X, Y) finds in a 1920 by 1080 view of the whole drawing (or of --window),
// and its values. Exit status 0, 1 when no text is there, 2 as above.
int RunPick(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

inline constexpr const char* kDrawingUsage =
    "usage: parvenna-cli drawing FILE [--azimuth] [--degree-symbol S]\n"
    "       parvenna-cli pick FILE X Y [--window BLX,BLY,TRX,TRY] [--azimuth] [--degree-symbol S]\n";

}  // namespace parvenna::cli
