#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
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

// A file supplied with the program, as the build made it: share/parvenna/
// of the build, which no program run writes.
inline std::filesystem::path Supplied(const std::string& name) {
  return std::filesystem::path(PARVENNA_SUPPLIED_DIR) / name;
}

// Copies supplied files into a test's own directory.
inline void CopySupplied(const std::filesystem::path& dir, std::initializer_list<const char*> names) {
  for (const char* name : names) std::filesystem::copy_file(Supplied(name), dir / name);
}

// An environment variable set, or unset with nullptr, for as long as the
// object lives, and given back its old value after.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) {
      old_ = old;
      had_ = true;
    }
    if (value) setenv(name, value, 1);
    else unsetenv(name);
  }
  ~ScopedEnv() {
    if (had_) setenv(name_.c_str(), old_.c_str(), 1);
    else unsetenv(name_.c_str());
  }
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_, old_;
  bool had_ = false;
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
