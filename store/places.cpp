#include "store/places.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "store/messages.h"
#include "store/paths.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace parvenna::store {

namespace fs = std::filesystem;

namespace {

// The path as a directory name: whole, tidied, and without a separator at its
// end, so that two names of one directory compare equal.
std::string DirectoryName(const fs::path& path) {
  fs::path tidy = path.lexically_normal();
  if (!tidy.has_filename() && tidy.has_relative_path()) tidy = tidy.parent_path();
  return tidy.string();
}

// An environment variable's value; empty when it is not set.
std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

#if !defined(_WIN32)
// A base directory of the freedesktop rules: the variable when it holds an
// absolute path, else the fallback under the home directory.
fs::path XdgBase(const char* variable, const char* underHome) {
  const fs::path value = Environment(variable);
  if (value.is_absolute()) return value;
  const fs::path home = Environment("HOME");
  return (home.empty() ? fs::path("/") : home) / underHome;
}
#endif

// The words for a user folder, or a file in it, that could not be made.
std::string FolderFailure(const fs::path& path, const std::error_code& ec) {
  std::string text = messages::UserFolderFailed;
  text += path.string();
  if (ec) {
    text += '\n';
    text += ec.message();
  }
  return text;
}

// Copies a file so that it appears whole or not at all, and the copy is the
// user's to write whatever the mode of the original.
bool CopyWhole(const fs::path& from, const fs::path& to, std::string& failure) {
  std::error_code ec;
  fs::path part = to;
  part += ".part";
  fs::copy_file(from, part, fs::copy_options::overwrite_existing, ec);
  if (!ec) fs::permissions(part, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, ec);
  if (!ec) fs::rename(part, to, ec);
  if (ec) {
    failure = FolderFailure(to, ec);
    fs::remove(part, ec);
    return false;
  }
  return true;
}

}  // namespace

std::string ProgramDirectory() {
  std::error_code ec;
#ifdef _WIN32
  std::wstring buffer(32768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
  if (length > 0 && length < buffer.size()) {
    buffer.resize(length);
    return DirectoryName(fs::path(buffer).parent_path());
  }
#else
  const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
  if (!ec) return DirectoryName(exe.parent_path());
#endif
  return DirectoryName(fs::current_path(ec));
}

std::string SuppliedFile(std::string_view name) { return SuppliedFile(ProgramDirectory(), name); }

std::string SuppliedFile(std::string_view programDirectory, std::string_view name) {
  const fs::path program = fs::path(NativePath(programDirectory));
  const fs::path beside = program / NativePath(name);
  const fs::path installed = (program / kSuppliedFolder / NativePath(name)).lexically_normal();
  std::error_code ec;
  if (!fs::exists(beside, ec) && fs::exists(installed, ec)) return installed.string();
  return beside.string();
}

UserDirectories UserDirectoriesOf() {
#ifdef _WIN32
  const fs::path roaming = Environment("APPDATA");
  const fs::path local = Environment("LOCALAPPDATA");
  return {DirectoryName(roaming / kApplicationName),
          DirectoryName(local / kApplicationName / "cache")};
#else
  return {DirectoryName(XdgBase("XDG_DATA_HOME", ".local/share") / kApplicationName),
          DirectoryName(XdgBase("XDG_CACHE_HOME", ".cache") / kApplicationName)};
#endif
}

bool DirectoryWritable(const std::string& directory) {
  std::error_code ec;
  if (directory.empty() || !fs::is_directory(NativePath(directory), ec)) return false;
  const fs::path probe = fs::path(NativePath(directory)) / ".parvenna-write-probe";
  {
    std::ofstream out(probe, std::ios::binary | std::ios::app);
    if (!out) return false;
  }
  fs::remove(probe, ec);
  return true;
}

Places LocatePlaces(std::string_view programDirectory) {
  const std::string program = DirectoryName(NativePath(programDirectory));
  const fs::path ownStore = fs::path(program) / kSystemStoreName;
  std::error_code ec;
  if (fs::is_regular_file(ownStore, ec) && DirectoryWritable(program)) {
    std::ofstream probe(ownStore, std::ios::binary | std::ios::in | std::ios::out);
    if (probe) return Places{program, false, ""};
  }

  Places places{DirectoryName(UserDirectoriesOf().Data), true, ""};
  const fs::path data = places.AppDirectory;
  if (fs::is_regular_file(data / kSystemStoreName, ec)) return places;
  fs::create_directories(data, ec);
  if (ec || !DirectoryWritable(places.AppDirectory)) {
    places.Failure = FolderFailure(data, ec);
    return places;
  }
  const fs::path suppliedStore = SuppliedFile(program, kSystemStoreName);
  if (!fs::is_regular_file(suppliedStore, ec)) return places;  // the store's own words follow
  // The samples first and only where the user has none; the store last, as
  // the mark of a first start that went through.
  for (const char* sample : kSampleFiles) {
    const fs::path supplied = SuppliedFile(program, sample);
    if (fs::exists(data / sample, ec) || !fs::is_regular_file(supplied, ec)) continue;
    if (!CopyWhole(supplied, data / sample, places.Failure)) return places;
  }
  CopyWhole(suppliedStore, data / kSystemStoreName, places.Failure);
  return places;
}

std::string WorkDirectory(const std::string& appDirectory) {
  const UserDirectories user = UserDirectoriesOf();
  if (DirectoryWritable(appDirectory) &&
      DirectoryName(NativePath(appDirectory)) != DirectoryName(user.Data)) {
    return appDirectory;
  }
  std::error_code ec;
  fs::create_directories(user.Cache, ec);
  return user.Cache;
}

}  // namespace parvenna::store
