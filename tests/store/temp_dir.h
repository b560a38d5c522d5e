#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace parvenna::testing {

// A fresh directory under the system's temporary folder, removed with its
// contents when the test ends.
class TempDir {
 public:
  TempDir() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("parvenna-store-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  // The directory as the program keeps it: with its separator at the end.
  std::string WithSeparator() const { return path_.string() + "/"; }

 private:
  std::filesystem::path path_;
};

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
}

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace parvenna::testing
