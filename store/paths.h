#pragma once

#include <string>
#include <string_view>

// Paths as the program keeps them. Projects come from Windows machines as
// well, so a stored path may use `\` or `/`, and `.\` and `./` alike mean "the
// program's own directory". The program writes its own separator.
namespace parvenna::store {

#ifdef _WIN32
inline constexpr char kSeparator = '\\';
#else
inline constexpr char kSeparator = '/';
#endif

inline bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// The characters behind the last separator, or the whole text when it has none.
std::string FileNameOfPath(std::string_view path);
// The characters up to and with the last separator; empty when there is none.
std::string DirectoryOfPath(std::string_view path);
// The directory with one separator at its end, whether or not it had one.
std::string WithSeparator(std::string_view directory);
// The path with every separator turned into this platform's.
std::string NativePath(std::string_view path);

// Existence as the dialogs test it: the empty path counts as present.
bool PathExists(std::string_view path);
bool FileExists(std::string_view path);
bool DirectoryExists(std::string_view path);

// True when the path starts with the relative prefix `.\` or `./`.
bool IsRelativePath(std::string_view path);
// A stored drawing path made whole: when it starts with the relative prefix,
// every `.\` and `./` in it stands for the program's directory, and the
// result has this platform's separators. Other paths are returned as they
// are; the empty path stays empty.
std::string ResolveDrawingPath(std::string_view stored, std::string_view appDirectory);

// The drawing opened when a project's own cannot be: a default.dwg that a
// user put in the program's directory, else the default.dxf supplied with it.
std::string DefaultDrawingPath(std::string_view appDirectory);

inline constexpr const char* kSystemStoreName = "ParvennaPro.pvs";
std::string SystemStorePath(std::string_view appDirectory);

// Upper case of the ASCII letters, for names compared without regard to case.
std::string UpperCase(std::string_view text);

}  // namespace parvenna::store
