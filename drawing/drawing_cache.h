#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "drawing/drawing_document.h"

// Drawings as they were last read, kept in a directory of the user's cache,
// so that a project whose drawing has not changed opens it in a fraction of
// the time its reading takes (a county sheet takes seconds to read).
//
// A kept copy stands for its file only while the file has the same path,
// size and time of change as when it was read, and only for the build of
// the program that wrote it, whose readers made it. It is never trusted
// blindly: a copy that is cut short, altered, of another layout or whose
// entities point outside its arrays is removed and the file read again.
// A copy is written whole under another name and then renamed, so that a
// program stopped while writing leaves nothing that passes for one. The
// most recently used kKept copies are kept; older ones go.
namespace parvenna::drawing {

// What tells one state of a file from another.
struct FileStamp {
  bool known = false;  // false when the file cannot be looked at
  std::uint64_t size = 0;
  std::int64_t time = 0;  // of the last change, in the file system's ticks
};
FileStamp StampOf(const std::string& path);

class DrawingCache {
 public:
  static constexpr int kKept = 8;

  // The directory is made when the first copy is kept.
  explicit DrawingCache(std::string directory) : directory_(std::move(directory)) {}
  const std::string& Directory() const { return directory_; }

  // The document kept for the file at path when it had this stamp; null when
  // there is none or the copy does not read whole (it is then removed).
  std::unique_ptr<DrawingDocument> Find(const std::string& path, const FileStamp& stamp) const;
  // Keeps a document read from its path while the file had this stamp.
  // False when it cannot be written: a full or read-only disk only costs
  // the next opening its time.
  bool Keep(const DrawingDocument& document, const FileStamp& stamp) const;
  // Where the copy for a drawing's path is kept.
  std::string CopyPath(const std::string& path) const;

 private:
  void RemoveOldest() const;

  std::string directory_;
};

}  // namespace parvenna::drawing
