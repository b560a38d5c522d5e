#pragma once

#include <string>
#include <string_view>

// Where the program finds what it was supplied with and where it writes.
//
// A program run from its build folder, or a copy unpacked into a folder of the
// user's, keeps everything in its own directory, as it always has: the system
// store, the sample projects, the work files. An installed program cannot
// write beside itself, so it keeps a copy of the supplied store and samples
// in the user's data directory, made at its first start, and writes its work
// files into the user's cache directory. The read-only files that come with
// it (the supplied store, samples, default drawing, help, the DWG converter)
// stand beside it or, installed, under ../share/parvenna.
namespace parvenna::store {

// The application's name, which names the user's directories for it.
inline constexpr const char* kApplicationName = "Parvenna";

// The directory of the running program, without a separator at its end.
std::string ProgramDirectory();

// Where an installed program's supplied files stand, seen from its binaries.
inline constexpr const char* kSuppliedFolder = "../share/parvenna";

// A file supplied with the program, read-only, by its name under the supplied
// folder ("help/index.html"): beside the program, else in the supplied
// folder. When neither holds it, the path beside the program, so that a
// message names the place where it was looked for.
std::string SuppliedFile(std::string_view name);
std::string SuppliedFile(std::string_view programDirectory, std::string_view name);

// The user's own writable directories for this program, as Qt's
// QStandardPaths names them (AppDataLocation, CacheLocation) for the
// application "Parvenna": on Linux $XDG_DATA_HOME/Parvenna (else
// ~/.local/share/Parvenna) and $XDG_CACHE_HOME/Parvenna (else
// ~/.cache/Parvenna); on Windows %APPDATA%\Parvenna and
// %LOCALAPPDATA%\Parvenna\cache. Not made here.
struct UserDirectories {
  std::string Data;
  std::string Cache;
};
UserDirectories UserDirectoriesOf();

// What a program's own directory holds for it to write: the system store and
// the sample projects with their drawings (the samples' drawings are linked
// by ".\", that is, beside the store).
inline constexpr const char* kSampleFiles[] = {"sample_feet.pvd", "sample_feet.dxf",
                                               "sample_metres.pvd", "sample_metres.dxf"};

struct Places {
  // The directory that stands for the program's own: the system store, the
  // place ".\" means in a stored path, a new project's default location.
  std::string AppDirectory;
  bool PerUser = false;  // AppDirectory is the user's data directory
  // Empty when AppDirectory is ready; else the words that say why it is not.
  std::string Failure;
};

// The program's own directory when it holds the system store and both can be
// written; otherwise the user's data directory, which the first start fills
// with copies of the supplied store and samples (the store last, so that a
// start cut short copies again). Copies are the user's to write, whatever
// the supplied files' modes.
Places LocatePlaces(std::string_view programDirectory);

// The directory of the work files (temp.rpt, tempcsv.rpt, temp.mgb) and
// caches: AppDirectory when it is a writable directory other than the user's
// data directory, else the user's cache directory, made when needed.
std::string WorkDirectory(const std::string& appDirectory);

// True when a file can be made in the directory.
bool DirectoryWritable(const std::string& directory);

}  // namespace parvenna::store
