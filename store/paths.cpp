#include "store/paths.h"

#include <cctype>
#include <filesystem>
#include <system_error>

#include "store/places.h"

namespace parvenna::store {

std::string FileNameOfPath(std::string_view path) {
  for (std::size_t i = path.size(); i > 0; --i) {
    if (IsSeparator(path[i - 1])) return std::string(path.substr(i));
  }
  return std::string(path);
}

std::string DirectoryOfPath(std::string_view path) {
  return std::string(path.substr(0, path.size() - FileNameOfPath(path).size()));
}

std::string WithSeparator(std::string_view directory) {
  std::string out(directory);
  if (out.empty() || !IsSeparator(out.back())) out += kSeparator;
  return out;
}

std::string NativePath(std::string_view path) {
  std::string out(path);
  for (char& c : out) {
    if (IsSeparator(c)) c = kSeparator;
  }
  return out;
}

bool PathExists(std::string_view path) {
  std::error_code ec;
  return path.empty() || std::filesystem::exists(NativePath(path), ec);
}

bool FileExists(std::string_view path) {
  std::error_code ec;
  return path.empty() || std::filesystem::is_regular_file(NativePath(path), ec);
}

bool DirectoryExists(std::string_view path) {
  std::error_code ec;
  return path.empty() || std::filesystem::is_directory(NativePath(path), ec);
}

bool IsRelativePath(std::string_view path) {
  return path.size() >= 2 && path[0] == '.' && IsSeparator(path[1]);
}

std::string ResolveDrawingPath(std::string_view stored, std::string_view appDirectory) {
  if (!IsRelativePath(stored)) return std::string(stored);
  std::string base = WithSeparator(appDirectory);
  std::string out;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    if (stored[i] == '.' && i + 1 < stored.size() && IsSeparator(stored[i + 1])) {
      out += base;
      ++i;
    } else {
      out += stored[i];
    }
  }
  return NativePath(out);
}

std::string DefaultDrawingPath(std::string_view appDirectory) {
  std::string dwg = WithSeparator(appDirectory) + "default.dwg";
  std::error_code ec;
  if (std::filesystem::is_regular_file(NativePath(dwg), ec)) return dwg;
  return SuppliedFile("default.dxf");
}

std::string SystemStorePath(std::string_view appDirectory) {
  return WithSeparator(appDirectory) + kSystemStoreName;
}

std::string UpperCase(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace parvenna::store
