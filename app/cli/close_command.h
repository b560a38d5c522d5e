#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace parvenna::cli {

// parvenna-cli close FILE|- [options]: walks a parcel as the editor does and
// prints its results. Exit status 0, 1 for a run-time failure of the
// computation, 2 for bad arguments or a malformed parcel.
int RunClose(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
             std::ostream& err);

inline constexpr const char* kCloseUsage =
    "usage: parvenna-cli close FILE|- [--azimuth] [--decimals N] [--tolerance T]\n"
    "         [--degree-symbol S] [--tangent-tolerance D,M,S] [--warning-range D,M,S]\n"
    "         [--auto-invert] [--check] [--json] [--sketch FILE.svg] [--sketch-size W,H]\n";

}  // namespace parvenna::cli
