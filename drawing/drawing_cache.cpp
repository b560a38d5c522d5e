#include "drawing/drawing_cache.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace parvenna::drawing {
namespace fs = std::filesystem;

namespace {

// The first bytes of a copy; the digit grows whenever what follows changes
// its order or meaning.
constexpr char kMagic[8] = {'P', 'V', 'D', 'R', 'A', 'W', '0', '1'};
constexpr std::string_view kEnding = ".drawing";

// The arrays are kept as they lie in memory: a copy is read back only by a
// program whose records have the same sizes.
constexpr std::uint64_t kLayout = std::uint64_t{sizeof(Entity)} | std::uint64_t{sizeof(Point)} << 12 |
                                  std::uint64_t{sizeof(ArcData)} << 24 |
                                  std::uint64_t{sizeof(TextData)} << 36 | std::uint64_t{sizeof(Box)} << 48;

// A sum of every byte after it, quick enough for a copy of tens of megabytes:
// four lanes of multiply and rotate over blocks of 32 bytes, the tail byte
// by byte. Each call adds its bytes as one piece, so a reader makes the same
// calls as the writer did.
class Checksum {
 public:
  void Add(const void* data, std::size_t n) {
    const auto* p = static_cast<const unsigned char*>(data);
    std::uint64_t lane[4] = {sum_ + kP1 + kP2, sum_ + kP2, sum_, sum_ - kP1};
    for (; n >= 32; p += 32, n -= 32) {
      for (int i = 0; i < 4; ++i) {
        std::uint64_t word;
        std::memcpy(&word, p + 8 * i, 8);
        lane[i] = std::rotl(lane[i] + word * kP2, 31) * kP1;
      }
    }
    std::uint64_t sum = std::rotl(lane[0], 1) + std::rotl(lane[1], 7) + std::rotl(lane[2], 12) +
                        std::rotl(lane[3], 18);
    for (; n > 0; ++p, --n) sum = (sum ^ *p) * kP3;
    sum_ = Avalanche(sum + kP3);
  }
  std::uint64_t Sum() const { return sum_; }

 private:
  static constexpr std::uint64_t kP1 = 0x9E3779B185EBCA87u, kP2 = 0xC2B2AE3D27D4EB4Fu,
                                 kP3 = 0x100000001B3u;
  static std::uint64_t Avalanche(std::uint64_t h) {
    h ^= h >> 33;
    h *= kP2;
    h ^= h >> 29;
    return h ^ (h >> 32);
  }
  std::uint64_t sum_ = 0;
};

struct CloseFile {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenFile(const fs::path& path, const char* mode) {
#ifdef _WIN32
  return File(_wfopen(path.c_str(), mode[0] == 'r' ? L"rb" : L"wb"));
#else
  return File(std::fopen(path.c_str(), mode));
#endif
}

class Writer {
 public:
  explicit Writer(std::FILE* file) : file_(file) {}
  // Nothing is written for no bytes: an empty array's data may be null.
  void Bytes(const void* data, std::size_t n) {
    if (n == 0) return;
    checksum_.Add(data, n);
    ok_ = ok_ && std::fwrite(data, 1, n, file_) == n;
  }
  template <class T>
  void Plain(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    Bytes(&value, sizeof value);
  }
  void Plain(const bool& value) { Plain(static_cast<std::uint8_t>(value)); }
  void Text(const std::string& text) {
    Plain(std::uint64_t{text.size()});
    Bytes(text.data(), text.size());
  }
  template <class T>
  void Array(const std::vector<T>& items) {
    static_assert(std::is_trivially_copyable_v<T>);
    Plain(std::uint64_t{items.size()});
    Bytes(items.data(), items.size() * sizeof(T));
  }
  template <class T, class Each>
  void Items(const std::vector<T>& items, Each&& each) {
    Plain(std::uint64_t{items.size()});
    for (const T& item : items) each(item);
  }
  bool Ok() const { return ok_; }
  std::uint64_t Sum() const { return checksum_.Sum(); }

 private:
  std::FILE* file_;
  Checksum checksum_;
  bool ok_ = true;
};

// Reads what a Writer wrote; a count larger than the bytes left is damage,
// found before anything is made that large.
class Reader {
 public:
  Reader(std::FILE* file, std::uint64_t bytes) : file_(file), left_(bytes) {}
  void Bytes(void* data, std::size_t n) {
    if (n == 0) return;
    if (!ok_ || n > left_ || std::fread(data, 1, n, file_) != n) {
      ok_ = false;
      return;
    }
    left_ -= n;
    checksum_.Add(data, n);
  }
  template <class T>
  void Plain(T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    Bytes(&value, sizeof value);
  }
  void Plain(bool& value) {
    std::uint8_t byte = 0;
    Plain(byte);
    value = byte != 0;
  }
  void Text(std::string& text) {
    text.resize(Count(1));
    Bytes(text.data(), text.size());
  }
  template <class T>
  void Array(std::vector<T>& items) {
    static_assert(std::is_trivially_copyable_v<T>);
    items.resize(Count(sizeof(T)));
    Bytes(items.data(), items.size() * sizeof(T));
  }
  template <class T, class Each>
  void Items(std::vector<T>& items, Each&& each) {
    items.resize(Count(1));
    for (T& item : items) each(item);
  }
  bool Ok() const { return ok_; }
  bool AtEnd() const { return ok_ && left_ == 0; }
  std::uint64_t Sum() const { return checksum_.Sum(); }

 private:
  std::size_t Count(std::size_t itemBytes) {
    std::uint64_t n = 0;
    Plain(n);
    if (!ok_ || n > left_ / itemBytes) {
      ok_ = false;
      return 0;
    }
    return static_cast<std::size_t>(n);
  }

  std::FILE* file_;
  std::uint64_t left_;
  Checksum checksum_;
  bool ok_ = true;
};

// What makes a copy stand for a file: the file's path and stamp, the build
// of the program and the layout of its records.
struct Key {
  std::uint64_t layout = kLayout;
  FileStamp program;
  std::string path;
  FileStamp file;
};

template <class Archive, class K>
void TransferKey(Archive& a, K& key) {
  a.Plain(key.layout);
  a.Plain(key.program.size);
  a.Plain(key.program.time);
  a.Text(key.path);
  a.Plain(key.file.size);
  a.Plain(key.file.time);
}

// The document in the order of its members; the path is the key's.
template <class Archive, class Document>
void TransferDocument(Archive& a, Document& d) {
  a.Plain(d.format);
  a.Text(d.version);
  a.Items(d.layers, [&](auto& layer) {
    a.Text(layer.name);
    a.Plain(layer.on);
    a.Plain(layer.colour);
    a.Plain(layer.entityCount);
  });
  a.Array(d.entities);
  a.Array(d.vertices);
  a.Array(d.arcs);
  a.Array(d.texts);
  a.Text(d.pool);
  a.Plain(d.extent);
  a.Items(d.fileCounts, [&](auto& count) {
    a.Text(count.type);
    a.Plain(count.count);
  });
}

// Whether every entity and text points within the arrays and holds values
// its kind can have, as the readers make them: what the views and picks
// rely on without looking.
bool Whole(const DrawingDocument& d) {
  switch (d.format) {
    case DrawingFormat::Dxf:
    case DrawingFormat::Dwg:
    case DrawingFormat::Dgn:
      break;
    default:
      return false;
  }
  const auto within = [](std::uint64_t first, std::uint64_t count, std::size_t size) {
    return first + count <= size;
  };
  for (const Entity& e : d.entities) {
    if (e.layer >= d.layers.size()) return false;
    std::uint32_t fewest = 0;
    switch (e.kind) {
      case EntityKind::Point:
      case EntityKind::Hatch:
        fewest = 1;
        break;
      case EntityKind::Line:
      case EntityKind::Polyline:
        fewest = 2;
        break;
      case EntityKind::Arc:
      case EntityKind::Circle:
        if (e.first >= d.arcs.size()) return false;
        continue;
      case EntityKind::Text:
        if (e.first >= d.texts.size()) return false;
        continue;
      default:
        return false;
    }
    if (e.count < fewest || !within(e.first, e.count, d.vertices.size())) return false;
  }
  for (const TextData& t : d.texts) {
    if (!within(t.raw, t.rawLength, d.pool.size()) || !within(t.shown, t.shownLength, d.pool.size()) ||
        t.halign > HAlign::Right || t.valign > VAlign::Bottom || t.codes > TextCodes::Literal) {
      return false;
    }
  }
  return true;
}

// The running program's stamp: a copy written by another build is not read,
// since that build's readers may have made another document of the file.
const FileStamp& ProgramStamp() {
#ifdef __linux__
  static const FileStamp stamp = StampOf("/proc/self/exe");
#else
  static const FileStamp stamp;
#endif
  return stamp;
}

int ProcessNumber() {
#ifdef _WIN32
  return _getpid();
#else
  return static_cast<int>(getpid());
#endif
}

// The path a copy is known by: the same file however the project names it.
std::string Absolute(const std::string& path) {
  std::error_code ec;
  const fs::path absolute = fs::absolute(fs::path(path), ec);
  return (ec ? fs::path(path) : absolute).lexically_normal().string();
}

void Remove(const fs::path& path) {
  std::error_code ignored;
  fs::remove(path, ignored);
}

}  // namespace

FileStamp StampOf(const std::string& path) {
  std::error_code ec;
  const fs::path p = fs::path(path);
  FileStamp stamp;
  stamp.size = fs::file_size(p, ec);
  if (ec) return {};
  const auto time = fs::last_write_time(p, ec);
  if (ec) return {};
  stamp.time = static_cast<std::int64_t>(time.time_since_epoch().count());
  stamp.known = true;
  return stamp;
}

std::string DrawingCache::CopyPath(const std::string& path) const {
  // FNV-1a of the full path names the copy; the copy holds the path itself.
  std::uint64_t h = 0xCBF29CE484222325u;
  for (const char c : Absolute(path)) {
    h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
  }
  char name[17];
  std::snprintf(name, sizeof name, "%016llx", static_cast<unsigned long long>(h));
  return (fs::path(directory_) / (std::string(name) + std::string(kEnding))).string();
}

std::unique_ptr<DrawingDocument> DrawingCache::Find(const std::string& path,
                                                    const FileStamp& stamp) const {
  if (directory_.empty() || !stamp.known) return nullptr;
  const fs::path copy = fs::path(CopyPath(path));
  std::error_code ec;
  const std::uint64_t bytes = fs::file_size(copy, ec);
  if (ec) return nullptr;
  File file = OpenFile(copy, "rb");
  if (!file) return nullptr;

  char magic[sizeof kMagic];
  std::uint64_t sum = 0;
  const std::uint64_t head = sizeof magic + sizeof sum;
  if (bytes < head || std::fread(magic, 1, sizeof magic, file.get()) != sizeof magic ||
      std::fread(&sum, 1, sizeof sum, file.get()) != sizeof sum ||
      std::memcmp(magic, kMagic, sizeof magic) != 0) {
    file.reset();
    Remove(copy);
    return nullptr;
  }
  Reader reader(file.get(), bytes - head);
  Key key;
  TransferKey(reader, key);
  const Key wanted{kLayout, ProgramStamp(), Absolute(path), stamp};
  if (!reader.Ok() || key.layout != wanted.layout || key.program.size != wanted.program.size ||
      key.program.time != wanted.program.time || key.path != wanted.path ||
      key.file.size != wanted.file.size || key.file.time != wanted.file.time) {
    // The file has changed, or another build wrote the copy: it stands for
    // nothing now.
    file.reset();
    Remove(copy);
    return nullptr;
  }
  auto document = std::make_unique<DrawingDocument>();
  TransferDocument(reader, *document);
  if (!reader.AtEnd() || reader.Sum() != sum || !Whole(*document)) {
    file.reset();
    Remove(copy);
    return nullptr;
  }
  document->path = path;
  file.reset();
  // The most recently used copies are the ones kept.
  fs::last_write_time(copy, fs::file_time_type::clock::now(), ec);
  return document;
}

bool DrawingCache::Keep(const DrawingDocument& document, const FileStamp& stamp) const {
  if (directory_.empty() || !stamp.known) return false;
  std::error_code ec;
  fs::create_directories(fs::path(directory_), ec);
  const fs::path copy = fs::path(CopyPath(document.path));
  fs::path part = copy;
  part += "." + std::to_string(ProcessNumber()) + ".part";
  bool written = false;
  {
    File file = OpenFile(part, "wb");
    if (!file) return false;
    std::uint64_t sum = 0;
    written = std::fwrite(kMagic, 1, sizeof kMagic, file.get()) == sizeof kMagic &&
              std::fwrite(&sum, 1, sizeof sum, file.get()) == sizeof sum;
    Writer writer(file.get());
    const Key key{kLayout, ProgramStamp(), Absolute(document.path), stamp};
    TransferKey(writer, key);
    TransferDocument(writer, document);
    sum = writer.Sum();
    written = written && writer.Ok() && std::fseek(file.get(), sizeof kMagic, SEEK_SET) == 0 &&
              std::fwrite(&sum, 1, sizeof sum, file.get()) == sizeof sum;
    // A full disk may tell only when the last of the file goes out.
    written = std::fclose(file.release()) == 0 && written;
  }
  if (written) fs::rename(part, copy, ec);
  if (!written || ec) {
    Remove(part);
    return false;
  }
  RemoveOldest();
  return true;
}

void DrawingCache::RemoveOldest() const {
  std::vector<std::pair<fs::file_time_type, fs::path>> copies;
  std::error_code ec;
  for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(directory_), ec)) {
    if (entry.path().extension() != kEnding) continue;
    copies.emplace_back(entry.last_write_time(ec), entry.path());
  }
  if (copies.size() <= static_cast<std::size_t>(kKept)) return;
  std::sort(copies.begin(), copies.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
  for (std::size_t i = kKept; i < copies.size(); ++i) Remove(copies[i].second);
}

}  // namespace parvenna::drawing
