#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// The DWG converter's output, split into records: one record a line, its
// fields separated by tabs, as drawing/dwg_converter/dwg_to_records.mjs
// writes them. The text stays whole; records and fields point into it.
namespace parvenna::drawing {

class DwgRecords {
 public:
  // A run of records: [begin, end).
  using Range = std::pair<std::size_t, std::size_t>;

  // False, with the reason in `why`, when the text is not the converter's
  // output or stops before its last line.
  bool Parse(std::string text, std::string& why);

  std::size_t Count() const { return records_.size(); }
  // The record's first field, its kind ("line", "layer", ...).
  std::string_view Kind(std::size_t record) const { return Field(record, 0); }
  std::size_t FieldCount(std::size_t record) const { return records_[record].count; }
  std::string_view Field(std::size_t record, std::size_t field) const;

  const std::vector<std::size_t>& Layers() const { return layers_; }
  const std::vector<std::size_t>& Counts() const { return counts_; }
  Range Model() const { return model_; }
  // The block's header record and its entities; false when there is none of this name.
  bool Block(std::string_view name, std::size_t& header, Range& entities) const;

 private:
  struct Record {
    std::uint32_t first = 0;  // into fields_
    std::uint32_t count = 0;
  };
  std::string text_;
  std::vector<std::string_view> fields_;
  std::vector<Record> records_;
  std::vector<std::size_t> layers_, counts_;
  Range model_{0, 0};
  std::unordered_map<std::string_view, std::pair<std::size_t, Range>> blocks_;
};

// Reads the fields of one record in order. A field that is missing or not
// of its kind makes ok() false; the values read then are 0 and empty.
class FieldReader {
 public:
  FieldReader(const DwgRecords& records, std::size_t record, std::size_t from = 1)
      : records_(records), record_(record), next_(from) {}

  std::string_view Word();
  // The field with its escapes (\\ \t \n \r) undone.
  std::string Text();
  double Number();
  // A number's whole part, brought within low to high: a field out of range
  // reads as the nearer end, which no caller takes for a value in range.
  int Whole(int low, int high);
  // A count of items of `fieldsEach` fields that the record can still hold.
  std::size_t Count(std::size_t fieldsEach);
  bool Flag() { return Number() != 0; }
  // The record holds something that cannot be read.
  void Fail() { ok_ = false; }
  bool ok() const { return ok_; }

 private:
  const DwgRecords& records_;
  std::size_t record_;
  std::size_t next_;
  bool ok_ = true;
};

// The escapes of a text field undone.
std::string Unescape(std::string_view field);

}  // namespace parvenna::drawing
