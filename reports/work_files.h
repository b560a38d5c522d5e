#pragma once

#include <string>
#include <string_view>

// The work files of the text reports, temp.rpt and tempcsv.rpt. They stay on
// the disk after the window closes and the next report overwrites them, in
// the directory that store::WorkDirectory gives.
namespace parvenna::reports {

// The work file `name` of a program in `appDirectory`: every report finds
// its work files here, and only here.
std::string WorkFile(const std::string& appDirectory, std::string_view name);

// The directory and the name with one separator between.
std::string WorkFilePath(std::string_view directory, std::string_view name);

// Writes a whole file anew; false when it cannot be written.
bool WriteWholeFile(const std::string& path, std::string_view bytes);
// Reads a whole file; false when it cannot be read.
bool ReadWholeFile(const std::string& path, std::string& bytes);

}  // namespace parvenna::reports
