#include "reports/work_files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "store/paths.h"
#include "store/places.h"

namespace parvenna::reports {

std::string WorkFile(const std::string& appDirectory, std::string_view name) {
  return WorkFilePath(store::WorkDirectory(appDirectory), name);
}

std::string WorkFilePath(std::string_view directory, std::string_view name) {
  std::string path(directory);
  if (path.empty() || !store::IsSeparator(path.back())) path += store::kSeparator;
  path += name;
  return path;
}

bool WriteWholeFile(const std::string& path, std::string_view bytes) {
  // A file that exists is written over and then cut to its new length, so
  // that it keeps its pages: giving back and taking again the pages of a
  // work file of many megabytes costs more than writing it.
  const std::filesystem::path file(store::NativePath(path));
  std::ofstream out(file, std::ios::binary | std::ios::in | std::ios::out);
  if (!out) out.open(file, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (out.fail()) return false;
  std::error_code ec;
  std::filesystem::resize_file(file, bytes.size(), ec);
  return !ec;
}

bool ReadWholeFile(const std::string& path, std::string& bytes) {
  std::ifstream in(store::NativePath(path), std::ios::binary);
  if (!in) return false;
  bytes.assign(std::istreambuf_iterator<char>(in), {});
  return !in.bad();
}

}  // namespace parvenna::reports
