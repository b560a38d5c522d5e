#pragma once

#include <chrono>
#include <string>

// DWG files are read by LibreDWG, which is GPL-3.0-or-later and runs on
// Node.js: the script in dwg_converter/ turns one drawing into records, in a
// process of its own, with a time limit. The program talks to it only
// through its output (see dwg_records.h).
namespace parvenna::drawing {

struct DwgOptions {
  // The folder of dwg_to_records.mjs and its node_modules; empty: found by
  // ConverterDirectory().
  std::string converterDirectory;
  std::string node = "node";
  std::chrono::milliseconds limit = std::chrono::seconds(60);
};

enum class DwgFailure { None, ConverterMissing, Damaged, TimedOut, Unreadable };

struct DwgConversion {
  DwgFailure failure = DwgFailure::None;
  std::string records;  // the converter's output, when it succeeded
  std::string detail;   // why it failed and what to do, in the user's words
  double seconds = 0;   // wall time of the converter
  long peakKilobytes = 0;  // the most memory it held
};

// The converter's folder: beside the program, where the build puts it, or
// in ../share/parvenna/ from the program's folder, where it is installed.
// Empty when neither holds a complete converter.
std::string ConverterDirectory();
// The same for a program in this folder.
std::string ConverterDirectoryFor(const std::string& programDirectory);

// True when the folder holds the script and the LibreDWG package.
bool ConverterComplete(const std::string& directory);

// Runs the converter on one file.
DwgConversion ConvertDwg(const std::string& path, const DwgOptions& options = {});

}  // namespace parvenna::drawing
