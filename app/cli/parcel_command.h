#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace parvenna::cli {

// parvenna-cli parcel list|show|add|delete PROJECT ...: the parcels of a
// project through the editor's own routines: its loading, its checks before
// a parcel is stored, its save and its delete. Exit status 0; 1 when the
// parcel is not stored or not deleted (a check refuses it, the project is
// read-only or its disk full, the name is taken) or cannot be read, with the
// editor's message on `err`; 2 for bad arguments or a malformed parcel file.
// `appDirectory` is where the program's own files are; empty for the
// directory of the running program.
int RunParcel(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
              std::ostream& err, const std::string& appDirectory = "");

inline constexpr const char* kParcelUsage =
    "usage: parvenna-cli parcel list PROJECT.pvd\n"
    "       parvenna-cli parcel show PROJECT.pvd NAME\n"
    "       parvenna-cli parcel add PROJECT.pvd NAME FILE.csv|- [--no]\n"
    "       parvenna-cli parcel delete PROJECT.pvd NAME\n"
    "  list    each parcel: name, courses, closure, precision and area, tab-separated\n"
    "  show    the parcel's courses in the CSV that close reads\n"
    "  add     stores the parcel of the CSV file under NAME as the editor's Save/New does,\n"
    "          answering Yes to its questions, or No with --no\n"
    "  delete  deletes the parcel\n";

}  // namespace parvenna::cli
